// The arguments of the program.
#include "window/options.h"

#include <gtest/gtest.h>

namespace {

using cad_host::HostError;
using cad_host::ParseOptions;

/// The message of the error that the arguments cause.
std::wstring ErrorOf(const std::vector<std::wstring>& words) {
  try {
    ParseOptions(words);
  } catch (const HostError& error) {
    return error.Message();
  }
  return L"no error";
}

TEST(OptionsTest, AreRead) {
  const auto options = ParseOptions({L"--state",    L"C:\\s",     L"--revision",
                                     L"26.1",       L"--without", cad_host::Quirks::All()[0].name,
                                     L"--connect",  L"An add-in", L"--script",
                                     L"a.txt",      L"--step-ms", L"250",
                                     L"--stay",     L"--record",  L"b.txt",
                                     L"--language", L"zh-TW",     L"--geometry",
                                     L"1000x700",   L"--dpi",     L"144"});
  EXPECT_EQ(options.host.state_folder, L"C:\\s");
  EXPECT_EQ(options.host.revision, L"26.1");
  EXPECT_FALSE(options.host.quirks.IsOn(cad_host::Quirks::All()[0].quirk));
  EXPECT_TRUE(options.host.quirks.IsOn(cad_host::Quirks::All()[1].quirk));
  EXPECT_EQ(options.connect, L"An add-in");
  EXPECT_EQ(options.script, L"a.txt");
  EXPECT_EQ(options.step_ms, 250u);
  EXPECT_TRUE(options.stay);
  EXPECT_EQ(options.record, L"b.txt");
  EXPECT_EQ(options.language, window::kTraditionalChinese);
  EXPECT_EQ(options.size.cx, 1000);
  EXPECT_EQ(options.size.cy, 700);
  EXPECT_EQ(options.dpi, 144);
}

TEST(OptionsTest, AWrongOneIsNamed) {
  EXPECT_EQ(ErrorOf({L"--language", L"fr"}), L"\"fr\" is not a language; en, zh-CN and zh-TW are");
  EXPECT_EQ(ErrorOf({L"--geometry", L"1000"}), L"\"1000\" is not a value of --geometry; 1200x800 is one");
  EXPECT_EQ(ErrorOf({L"--geometry", L"1000x-5"}), L"\"-5\" is not a value of --geometry");
  EXPECT_EQ(ErrorOf({L"--step-ms", L"1s"}), L"\"1s\" is not a value of --step-ms");
  EXPECT_EQ(ErrorOf({L"--frobnicate", L"1"}), L"unknown argument \"--frobnicate\"; --help names all");
  EXPECT_EQ(ErrorOf({L"--state"}), L"\"--state\" is unknown or lacks its value; --help names all arguments");
}

}  // namespace
