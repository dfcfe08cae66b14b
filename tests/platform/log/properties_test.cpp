// What a configuration of the log may ask for.
#include <gtest/gtest.h>

#include "log_folder.h"

namespace {
TEST(PropertiesFile, ChoosesLevelsByLogger) {
  LogFolder log;
  ASSERT_TRUE(log.StartWith(FileAppender(L"${LogFolder}\\SolidWorks.log") +
                            L"log4cplus.logger.infomsg=OFF\nlog4cplus.logger.other=ERROR\n"));
  CLog::Print("f", 1, "F", L"infomsg", 20000, L"off");
  CLog::Print("f", 1, "F", L"other", 20000, L"too low");
  CLog::Print("f", 1, "F", L"other", 40000, L"high enough");
  CLog::Print("f", 1, "F", L"another", 0, L"lowest");
  EXPECT_EQ(log.Lines(),
            (std::vector<std::wstring>{L"other|ERROR|1|F|high enough", L"another|TRACE|1|F|lowest"}));
}

TEST(PropertiesFile, MayHaveAByteOrderMarkAndWindowsLineEnds) {
  LogFolder log;
  std::wstring lines = L"\xFEFF" + FileAppender(L"${LogFolder}\\SolidWorks.log");
  for (std::size_t at = 0; (at = lines.find(L'\n', at)) != std::wstring::npos; at += 2)
    lines.insert(at, L"\r");
  ASSERT_TRUE(log.StartWith(lines));
  PrintError(L"text");
  EXPECT_EQ(log.Lines(), std::vector<std::wstring>{kErrorLine});
}

TEST(PropertiesFile, MayNameFilesInAnyScript) {
  LogFolder log;
  ASSERT_TRUE(log.StartWith(FileAppender(L"${LogFolder}\\日志 \U0001F529.log")));
  PrintError(L"text");
  EXPECT_EQ(log.Lines(L"日志 \U0001F529.log"), std::vector<std::wstring>{kErrorLine});
}

TEST(PropertiesFile, ReadsVariablesFromItselfThenFromTheEnvironment) {
  // Both are environment variables. The library reads them as they were at the start of the process.
  LogFolder log;
  ASSERT_TRUE(log.StartWith(L"COMSPEC=own\n" + FileAppender(L"${LogFolder}\\${COMSPEC}-${OS}.log")));
  PrintError(L"text");
  EXPECT_EQ(log.Lines(L"own-Windows_NT.log"), std::vector<std::wstring>{kErrorLine});
}

TEST(PropertiesFile, MaySetTheLogFolderItself) {
  const TempFolder other;
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(L"LogFolder=" + other.Path() + L"\n" + FileAppender(L"${LogFolder}\\SolidWorks.log")));
  PrintError(L"text");
  EXPECT_TRUE(other.Exists(L"SolidWorks.log"));
}

TEST(PropertiesFile, KeepsTheLocaleThatAnAppenderNames) {
  LogFolder log;
  ASSERT_TRUE(log.StartWith(FileAppender(L"${LogFolder}\\SolidWorks.log") +
                            L"log4cplus.appender.file.Locale=CLASSIC\n"));
  PrintError(L"text");
  PrintError(L"图纸");
  PrintError(L"text");
  ASSERT_FALSE(log.Lines().empty());
  EXPECT_EQ(log.Lines()[0], kErrorLine);
  EXPECT_EQ(log.Folder().ReadText(L"SolidWorks.log").find(L"图纸"), std::wstring::npos);
}

TEST(PropertiesFile, WritesUtf8AfterARollingFileRolls) {
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(L"log4cplus.rootLogger=TRACE, file\n"
                    L"log4cplus.appender.file=log4cplus::RollingFileAppender\n"
                    L"log4cplus.appender.file.File=${LogFolder}\\SolidWorks.log\n"
                    L"log4cplus.appender.file.MaxFileSize=200KB\n"
                    L"log4cplus.appender.file.MaxBackupIndex=2\n"));
  for (int i = 0; i < 5; ++i) PrintError(std::wstring(70'000, L'图'));
  PrintError(L"text");
  EXPECT_EQ(log.Lines(), std::vector<std::wstring>{kErrorLine});
  EXPECT_TRUE(log.Folder().ReadText(L"SolidWorks.log.1").ends_with(L"图图\r\n"));
}

TEST(PropertiesFile, SetsSizeAndCountOfTheSharedFile) {
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(L"log4cplus.rootLogger=TRACE, file\n"
                    L"log4cplus.appender.file=tavo::SharedFileAppender\n"
                    L"log4cplus.appender.file.File=${LogFolder}\\SolidWorks.log\n"
                    L"log4cplus.appender.file.MaxFileSize=1KB\n"
                    L"log4cplus.appender.file.MaxBackupIndex=2\n"));
  for (int i = 0; i < 200; ++i) PrintError(L"text");
  EXPECT_EQ(log.Folder().List(), (std::vector<std::wstring>{L"Log4cplus.properties", L"SolidWorks.log",
                                                            L"SolidWorks.log.1", L"SolidWorks.log.2"}));
  EXPECT_LE(log.Folder().Read(L"SolidWorks.log.1").size(), 1024u);
  EXPECT_GT(log.Folder().Read(L"SolidWorks.log.1").size(), 900u);
}

TEST(PropertiesFile, MayNameTheFileByAPatternOnly) {
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(L"log4cplus.rootLogger=TRACE, file\n"
                    L"log4cplus.appender.file=log4cplus::TimeBasedRollingFileAppender\n"
                    L"log4cplus.appender.file.FilenamePattern=year %d{yyyy}.log\n"));
  PrintError(L"text");
  const std::vector<std::wstring> files = log.Folder().List();
  ASSERT_EQ(files.size(), 2u) << testing::PrintToString(files);
  EXPECT_TRUE(files[1].starts_with(L"year ")) << testing::PrintToString(files);
  EXPECT_EQ(log.Lines(files[1]), std::vector<std::wstring>{kErrorLine});
}

TEST(PropertiesFile, MayAskForMissingFolders) {
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(FileAppender(L"sub\\deep\\file.log") + L"log4cplus.appender.file.CreateDirs=true\n"));
  PrintError(L"text");
  EXPECT_EQ(log.Lines(L"sub\\deep\\file.log"), std::vector<std::wstring>{kErrorLine});
}

TEST(PropertiesFile, MayNameASharedFileBeyondTwoHundredAndSixtyCharacters) {
  LogFolder log;
  const std::wstring name = std::wstring(120, L'd') + L"\\" + std::wstring(120, L'e') + L"\\file.log";
  ASSERT_TRUE(log.StartWith(FileAppender(name) + L"log4cplus.appender.file=tavo::SharedFileAppender\n"));
  PrintError(L"text");
  EXPECT_EQ(log.Lines(name), std::vector<std::wstring>{kErrorLine});
}

TEST(PropertiesFile, MaySwitchTheLogOff) {
  LogFolder log;
  ASSERT_TRUE(log.StartWith(L"log4cplus.rootLogger=OFF\n"));
  PrintError(L"text");
  EXPECT_EQ(log.Folder().List(), std::vector<std::wstring>{L"Log4cplus.properties"});
}

TEST(PropertiesFile, MayNameAFileRelativeToTheLogFolder) {
  for (const wchar_t* type : {L"log4cplus::FileAppender", L"tavo::SharedFileAppender"}) {
    LogFolder log;
    log.Folder().MakeFolder(L"sub");
    ASSERT_TRUE(
        log.StartWith(FileAppender(L"sub\\relative.log") + L"log4cplus.appender.file=" + type + L"\n"));
    PrintError(L"text");
    EXPECT_EQ(log.Lines(L"sub\\relative.log"), std::vector<std::wstring>{kErrorLine});
  }
}

}  // namespace
