#include "options.h"

#include <gtest/gtest.h>

#include "window/texts.h"

using namespace plm_window;

namespace {

std::string FaultOf(const std::vector<std::wstring>& arguments) {
  try {
    ParseOptions(arguments);
  } catch (const std::runtime_error& fault) {
    return fault.what();
  }
  return "no fault";
}

TEST(WindowOptions, AreRead) {
  const Options options = ParseOptions(
      {L"--vault", L"C:\\v", L"--pipe", L"p", L"--language", L"zh-TW", L"--person", L"day.txt", L"--step-ms",
       L"20", L"--until-idle", L"3", L"--user", L"kim", L"--geometry", L"900x600", L"--misbehave", L"never"});
  EXPECT_EQ(options.vault, L"C:\\v");
  EXPECT_EQ(options.pipe, L"p");
  EXPECT_EQ(options.language, window::kTraditionalChinese);
  EXPECT_EQ(options.person, L"day.txt");
  EXPECT_EQ(options.step, std::chrono::milliseconds(20));
  EXPECT_EQ(options.until_idle, std::chrono::seconds(3));
  EXPECT_EQ(options.user, L"kim");
  EXPECT_EQ(options.geometry->cx, 900);
  EXPECT_EQ(options.geometry->cy, 600);
  EXPECT_EQ(options.misbehave->fault, Fault::kNever);
}

TEST(WindowOptions, NameWhatIsWrong) {
  const std::pair<std::vector<std::wstring>, const char*> cases[] = {
      {{}, "--vault must name a vault"},
      {{L"--loud"}, "no such option: --loud"},
      {{L"--vault"}, "--vault needs a value"},
      {{L"--vault", L"v", L"--language", L"fr"}, "--language takes en, zh-CN or zh-TW, not fr"},
      {{L"--vault", L"v", L"--geometry", L"900"}, "--geometry takes WIDTHxHEIGHT, not 900"},
      {{L"--vault", L"v", L"--step-ms", L"soon"}, "--step-ms takes a number, not soon"},
      {{L"--vault", L"v", L"--answers", L"Z:\\no\\such"}, "--answers must name a folder"},
      {{L"--vault", L"v", L"--misbehave", L"rude"}, "not rude"},
  };
  for (const auto& [arguments, message] : cases) {
    EXPECT_NE(FaultOf(arguments).find(message), std::string::npos) << FaultOf(arguments);
  }
  EXPECT_TRUE(ParseOptions({L"--help"}).help);
}

TEST(WindowTexts, AreThereInEveryLanguage) {
  for (const LANGID language : {window::kSimplifiedChinese, window::kTraditionalChinese}) {
    const window::Texts texts(language), english(window::kEnglish);
    int count = 0;
    for (unsigned id = 1000; id < 2100; ++id) {
      if (english(id).empty()) continue;
      ++count;
      EXPECT_NE(FindResourceExW(nullptr, RT_STRING, MAKEINTRESOURCEW(id / 16 + 1), language), nullptr) << id;
      EXPECT_EQ(texts(id).find(L"%1") == std::wstring::npos, english(id).find(L"%1") == std::wstring::npos)
          << id;
      EXPECT_EQ(texts(id).find(L'&') == std::wstring::npos, english(id).find(L'&') == std::wstring::npos)
          << id;
    }
    EXPECT_GT(count, 100);
  }
}

}  // namespace
