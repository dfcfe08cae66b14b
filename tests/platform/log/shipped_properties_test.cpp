#include <gtest/gtest.h>

#include <windows.h>

#include <regex>

#include "CStringHelper.h"
#include "log_folder.h"
#include "program_folder.h"

namespace {
// The file that is shipped for administrators. The build copies it beside this program.
std::wstring ShippedProperties() {
  return CStringHelper::UTF8ToUnicode(ReadFileBytes(BesideTests(L"Log4cplus.properties")));
}

void Replace(std::wstring& text, const std::wstring& from, const std::wstring& to) {
  const auto at = text.find(from);
  ASSERT_NE(at, std::wstring::npos) << testing::PrintToString(from);
  text.replace(at, from.size(), to);
}

void PrintBoth() {
  PrintError(L"图纸");
  CLog::Print("C:\\source\\DrawingHelper.cpp", 69, "CDrawingHelper::InsertChildFile", L"infomsg", 20000,
              L"begins");
}

// The lines without their times.
std::vector<std::wstring> LinesWithoutTime(const LogFolder& log, std::wstring_view name = L"SolidWorks.log") {
  std::vector<std::wstring> lines = log.Lines(name);
  for (std::wstring& line : lines) {
    line = std::regex_replace(line, std::wregex(LR"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} +)"), L"");
  }
  return lines;
}

TEST(ShippedProperties, LogLikeTheBuiltInSetUp) {
  LogFolder without, with;
  ASSERT_TRUE(without.Start());
  PrintBoth();
  without.Stop();
  with.Folder().WriteText(L"Log4cplus.properties", ShippedProperties());
  ASSERT_TRUE(with.Start());
  PrintBoth();
  with.Stop();

  ASSERT_EQ(LinesWithoutTime(with).size(), 2u);
  EXPECT_EQ(LinesWithoutTime(with), LinesWithoutTime(without));
}

TEST(ShippedProperties, CanSwitchOffInformation) {
  std::wstring properties = ShippedProperties();
  Replace(properties, L"#log4cplus.logger.infomsg=OFF", L"log4cplus.logger.infomsg=OFF");
  LogFolder log;
  log.Folder().WriteText(L"Log4cplus.properties", properties);
  ASSERT_TRUE(log.Start());
  PrintBoth();
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_TRUE(log.Lines()[0].ends_with(L"图纸"));
}

TEST(ShippedProperties, CanSwitchOnASecondFile) {
  std::wstring properties =
      std::regex_replace(ShippedProperties(), std::wregex(L"#(log4cplus.appender.errors)"), L"$1");
  Replace(properties, L"rootLogger=INFO, file", L"rootLogger=INFO, file, errors");
  LogFolder log;
  log.Folder().WriteText(L"Log4cplus.properties", properties);
  ASSERT_TRUE(log.Start());
  PrintBoth();
  EXPECT_EQ(log.Lines().size(), 2u);
  EXPECT_EQ(LinesWithoutTime(log, L"SolidWorks-errors.log"),
            std::vector<std::wstring>{L"ERROR errormsg C:\\source\\solidworks_add_in.cpp:368 - 图纸"});
}
}  // namespace
