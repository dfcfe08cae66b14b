// What happens with a configuration of the log that cannot be followed.
#include <gtest/gtest.h>

#include "log_folder.h"

namespace {

struct UselessFile {
  const char* what;
  std::string content;
};

TEST(PropertiesFile, ThatConfiguresNothingIsLoggedAndReplacedByTheBuiltInSetUp) {
  const UselessFile files[] = {
      {"empty", ""},
      {"no properties", "just some text\nand more"},
      {"not text", std::string("\x00\xFF\xFE\x80=\x01,\n\n", 8)},
      {"logger without an appender", "log4cplus.rootLogger=INFO"},
  };
  for (const UselessFile& file : files) {
    SCOPED_TRACE(file.what);
    LogFolder log;
    const std::wstring path = log.Folder().Write(L"Log4cplus.properties", file.content);
    ASSERT_TRUE(log.Start());
    PrintError(L"text");
    const std::vector<std::wstring> lines = log.Lines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_NE(lines[0].find(L" ERROR platform "), std::wstring::npos);
    EXPECT_NE(lines[0].find(L"/Log4cplus.properties assigns no appender to any logger"), std::wstring::npos);
    EXPECT_TRUE(lines[1].ends_with(L"text"));
  }
}

TEST(PropertiesFile, ThatCannotBeReadIsLoggedAndReplacedByTheBuiltInSetUp) {
  LogFolder log;
  log.Folder().MakeFolder(L"Log4cplus.properties");
  ASSERT_TRUE(log.Start());
  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_NE(lines[0].find(L"cannot read " + log.Folder().Path() + L"/Log4cplus.properties"),
            std::wstring::npos);
}

TEST(PropertiesFile, WithAVariableThatDoesNotExistInAPathIsLoggedAndLosesNothing) {
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(L"log4cplus.rootLogger=TRACE, file\n"
                    L"log4cplus.appender.file=log4cplus::FileAppender\n"
                    L"log4cplus.appender.file.File=${LogFolder}\\${NO_SUCH_VARIABLE}.log\n"));
  PrintError(L"text");
  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_NE(lines[0].find(L"log4cplus.appender.file.File: \""), std::wstring::npos);
  EXPECT_NE(lines[0].find(L"\\${NO_SUCH_VARIABLE}.log\" names a variable that does not exist"),
            std::wstring::npos);
  EXPECT_TRUE(lines[1].ends_with(L"text"));
}

TEST(PropertiesFile, CannotAskForAppendersWithThreads) {
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(L"log4cplus.rootLogger=TRACE, file, queue, remote\n"
                    L"log4cplus.appender.file=log4cplus::FileAppender\n"
                    L"log4cplus.appender.file.File=${LogFolder}\\SolidWorks.log\n"
                    L"log4cplus.appender.queue=log4cplus::AsyncAppender\n"
                    L"log4cplus.appender.queue.Appender=log4cplus::NullAppender\n"
                    L"log4cplus.appender.remote=log4cplus::SocketAppender\n"
                    L"log4cplus.appender.remote.host=localhost\n"
                    L"log4cplus.appender.remote.port=1\n"));
  PrintError(L"text");
  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_NE(lines[0].find(L"the appender \"queue\""), std::wstring::npos);
  EXPECT_NE(lines[1].find(L"the appender \"remote\""), std::wstring::npos);
  EXPECT_EQ(lines[2], kErrorLine);
}

/// A usable configuration with one fault.
struct Fault {
  const char* name;
  const wchar_t* lines;    // after the lines of FileAppender
  const wchar_t* message;  // what is logged after the path of the file
};

class PropertiesWithAFault : public testing::TestWithParam<Fault> {};

TEST_P(PropertiesWithAFault, LogKeyAndValueAndLoseNoEvent) {
  LogFolder log;
  log.Folder().WriteText(L"Log4cplus.properties", FileAppender(L"${LogFolder}\\SolidWorks.log") +
                                                      LogFolder::kFieldsLayout + GetParam().lines);
  ASSERT_TRUE(log.Start());
  PrintError(L"text");

  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), 2u) << testing::PrintToString(lines);
  EXPECT_NE(lines[0].find(log.Folder().Path() + L"/Log4cplus.properties: " + GetParam().message),
            std::wstring::npos)
      << testing::PrintToString(lines[0]);
  EXPECT_TRUE(lines[1].ends_with(L"text")) << testing::PrintToString(lines[1]);
}

INSTANTIATE_TEST_SUITE_P(
    , PropertiesWithAFault,
    testing::Values(
        Fault{"LevelOfTheRoot", L"log4cplus.rootLogger=INFOO, file\n",
              LR"(log4cplus.rootLogger: "INFOO" is not a level)"},
        Fault{"LevelOfALogger", L"log4cplus.logger.errormsg=LOUD\n",
              LR"(log4cplus.logger.errormsg: "LOUD" is not a level)"},
        Fault{"MissingLevel", L"log4cplus.rootLogger=file\n",
              LR"(log4cplus.rootLogger: "file" is not a level)"},
        Fault{"NameOfAnAppender", L"log4cplus.rootLogger=INFO, fiel\n",
              LR"(log4cplus.rootLogger: "fiel" is not the name of an appender)"},
        Fault{"SecondAppender", L"log4cplus.rootLogger=INFO, file, fiel\n",
              LR"(log4cplus.rootLogger: "fiel" is not the name of an appender)"},
        Fault{"AppenderOfALogger",
              L"log4cplus.logger.errormsg=INFO, fiel\nlog4cplus.additivity.errormsg=false\n",
              LR"(log4cplus.logger.errormsg: "fiel" is not the name of an appender)"},
        Fault{"TypeOfAnAppender", L"log4cplus.appender.file=log4cplus::FielAppender\n",
              LR"(log4cplus.appender.file: "log4cplus::FielAppender" is not an appender type)"},
        Fault{"MissingFile", L"log4cplus.appender.file.File=\n",
              LR"(log4cplus.appender.file.File: "" is not the path of a file)"},
        Fault{"MissingDrive", L"log4cplus.appender.file.File=Q:\\nowhere\\file.log\n",
              LR"(log4cplus.appender.file.File: "Q:\nowhere\file.log" cannot be opened: )"},
        Fault{"MissingDriveOfASharedFile",
              L"log4cplus.appender.file=tavo::SharedFileAppender\n"
              L"log4cplus.appender.file.File=Q:\\nowhere\\file.log\n",
              LR"(log4cplus.appender.file.File: "Q:\nowhere\file.log" cannot be opened: )"},
        Fault{"LockFile",
              L"log4cplus.appender.file.UseLockFile=true\nlog4cplus.appender.file.LockFile=Q:\\lock\n",
              LR"(log4cplus.appender.file.LockFile: "Q:\lock" cannot be opened: )"},
        Fault{"Layout", L"log4cplus.appender.file.layout=log4cplus::NoLayout\n",
              LR"(log4cplus.appender.file.layout: "log4cplus::NoLayout" is not a layout type)"},
        Fault{"KeyOfALayout",
              L"log4cplus.appender.file.layout=log4cplus::PatternLayout\n"
              L"log4cplus.appender.file.layout.ConversionPatern=%m%n\n",
              LR"(log4cplus.appender.file.layout.ConversionPatern: "%m%n" is ignored: the key is unknown)"},
        Fault{"Size",
              L"log4cplus.appender.file=tavo::SharedFileAppender\n"
              L"log4cplus.appender.file.MaxFileSize=ten MB\n",
              LR"(log4cplus.appender.file.MaxFileSize: "ten MB" is not a size such as 10MB)"},
        Fault{"Number",
              L"log4cplus.appender.file=log4cplus::RollingFileAppender\n"
              L"log4cplus.appender.file.MaxBackupIndex=-1\n",
              LR"(log4cplus.appender.file.MaxBackupIndex: "-1" is not a number)"},
        Fault{"Boolean", L"log4cplus.appender.file.Append=yes\n",
              LR"(log4cplus.appender.file.Append: "yes" is not true or false)"},
        Fault{"Threshold", L"log4cplus.appender.file.Threshold=HIGH\n",
              LR"(log4cplus.appender.file.Threshold: "HIGH" is not a level)"},
        Fault{"Locale", L"log4cplus.appender.file.Locale=Elsewhere\n",
              LR"(log4cplus.appender.file.Locale: "Elsewhere" is not a locale)"},
        Fault{"Schedule",
              L"log4cplus.appender.file=log4cplus::DailyRollingFileAppender\n"
              L"log4cplus.appender.file.Schedule=NEVER\n",
              LR"(log4cplus.appender.file.Schedule: "NEVER" is not a schedule)"},
        Fault{"Filter",
              L"log4cplus.appender.file.filters.1=NoSuchFilter\n"
              L"log4cplus.appender.file.filters.2=log4cplus::spi::DenyAllFilter\n",
              LR"(log4cplus.appender.file.filters.1: "NoSuchFilter" is not a filter type)"},
        Fault{"LevelOfAFilter",
              L"log4cplus.appender.file.filters.1=log4cplus::spi::LogLevelMatchFilter\n"
              L"log4cplus.appender.file.filters.1.LogLevelToMatch=ERORR\n"
              L"log4cplus.appender.file.filters.2=log4cplus::spi::DenyAllFilter\n",
              LR"(log4cplus.appender.file.filters.1.LogLevelToMatch: "ERORR" is not a level)"},
        Fault{"PropertyOfAnAppender", L"log4cplus.appender.file.MaxFileSize=1MB\n",
              LR"(log4cplus.appender.file.MaxFileSize: "1MB" is ignored: the key is unknown)"},
        Fault{
            "PropertyWithoutAnAppender", L"log4cplus.appender.errors.File=errors.log\n",
            LR"(log4cplus.appender.errors.File: "errors.log" is ignored: log4cplus.appender.errors is missing)"},
        Fault{
            "PropertyWithoutALayout",
            L"log4cplus.appender.other=log4cplus::NullAppender\n"
            L"log4cplus.appender.other.layout.ConversionPattern=%m%n\n",
            LR"(log4cplus.appender.other.layout.ConversionPattern: "%m%n" is ignored: log4cplus.appender.other.layout is missing)"},
        Fault{"GeneralProperty", L"log4cplus.disableOverride=maybe\n",
              LR"(log4cplus.disableOverride: "maybe" is not true or false)"},
        Fault{"Additivity", L"log4cplus.additivity.errormsg=no\n",
              LR"(log4cplus.additivity.errormsg: "no" is not true or false)"},
        Fault{"UnknownKey", L"log4cplus.rotLogger=INFO, file\n",
              LR"(log4cplus.rotLogger: "INFO, file" is ignored: the key is unknown)"}),
    [](const auto& fault) { return std::string(fault.param.name); });

TEST(PropertiesFile, WithSeveralFaultsHasALineForEach) {
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(L"log4cplus.rootLogger=${INFO, file\n"
                    L"log4cplus.appender.file=log4cplus::FielAppender\n"
                    L"log4cplus.logger.platform=INFOO\n"));
  PrintError(L"text");
  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), 4u) << testing::PrintToString(lines);
  EXPECT_NE(lines[0].find(L"log4cplus.appender.file: "), std::wstring::npos);
  EXPECT_NE(lines[1].find(LR"(log4cplus.rootLogger: "${INFO" is not a level)"), std::wstring::npos);
  EXPECT_NE(lines[2].find(LR"(log4cplus.logger.platform: "INFOO" is not a level)"), std::wstring::npos);
  EXPECT_TRUE(lines[3].ends_with(L"text"));
}

TEST(PropertiesFile, WithAWrongLayoutGetsTheBuiltInOne) {
  for (const wchar_t* type : {L"log4cplus::NoLayout", L"log4cplus::PatternLayout"}) {
    LogFolder log;
    log.Folder().WriteText(L"Log4cplus.properties", FileAppender(L"SolidWorks.log") +
                                                        L"log4cplus.appender.file.layout=" + type + L"\n");
    ASSERT_TRUE(log.Start());
    PrintError(L"text");

    const std::vector<std::wstring> lines = log.Lines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_NE(lines[0].find(L"log4cplus.appender.file.layout: \"" + std::wstring(type) + L"\" "),
              std::wstring::npos);
    EXPECT_TRUE(lines[1].ends_with(L" ERROR errormsg CSolidWorksAddIn::PlmLogin:368 - text"));
  }
}

TEST(PropertiesFile, KeepsARestrictedAppenderBesideTheBuiltInOne) {
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(L"log4cplus.rootLogger=INFO, file, errors\n"
                    L"log4cplus.appender.file=log4cplus::FielAppender\n"
                    L"log4cplus.appender.errors=tavo::SharedFileAppender\n"
                    L"log4cplus.appender.errors.File=errors.log\n"
                    L"log4cplus.appender.errors.Threshold=ERROR\n"));
  PrintError(L"error");
  CLog::Print("f", 1, "F", L"infomsg", 20000, L"information");
  EXPECT_EQ(log.Lines().size(), 3u);
  EXPECT_EQ(log.Lines(L"errors.log").size(), 2u);
}

/// Properties: an appender `name` that writes errors only, into errors.log.
std::wstring ErrorsAppender(const std::wstring& name) {
  const std::wstring key = L"log4cplus.appender." + name;
  return key + L"=tavo::SharedFileAppender\n" + key + L".File=errors.log\n" + key + L".Threshold=ERROR\n";
}

TEST(PropertiesFile, LosesNoEventOfALoggerWhoseKeyIsMisspelt) {
  LogFolder log;
  log.Folder().WriteText(L"Log4cplus.properties", L"log4cplus.rootLogger=INFO, errors\n" +
                                                      ErrorsAppender(L"errors") +
                                                      L"log4cplus.loger.infomsg=INFO, errors\n");
  ASSERT_TRUE(log.Start());
  CLog::Print("f", 1, "F", L"infomsg", 20000, L"information");
  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), 2u) << "the fault, and the event";
  EXPECT_TRUE(lines[1].ends_with(L"information"));
}

TEST(PropertiesFile, KeepsAnAppenderWithTheNameOfTheBuiltInOne) {
  LogFolder log;
  log.Folder().WriteText(L"Log4cplus.properties",
                         L"log4cplus.rootLogger=INFO, builtIn, fiel\n" + ErrorsAppender(L"builtIn"));
  ASSERT_TRUE(log.Start());
  CLog::Print("f", 1, "F", L"infomsg", 20000, L"information");
  EXPECT_EQ(log.Lines(L"errors.log").size(), 1u) << "the fault";
  EXPECT_EQ(log.Lines().size(), 2u) << "the fault, and the event";
}

TEST(PropertiesFile, KeepsLevelsThatLoggersHaveOnPurpose) {
  LogFolder log;
  ASSERT_TRUE(
      log.StartWith(L"log4cplus.rootLogger=INFO, fiel\n"
                    L"log4cplus.logger.infomsg=OFF\n"));
  PrintError(L"error");
  CLog::Print("f", 1, "F", L"infomsg", 20000, L"information");
  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_FALSE(lines.empty());
  EXPECT_TRUE(lines.back().ends_with(L"error"));
}

}  // namespace
