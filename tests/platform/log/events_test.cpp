#include <gtest/gtest.h>

#include <windows.h>

#include <array>
#include <thread>

#include "log/platform_log.h"
#include "log_folder.h"

namespace {
// A file appender of the log library, which an administrator may choose.
constexpr wchar_t kPlainFile[] =
    L"log4cplus.rootLogger=TRACE, file\n"
    L"log4cplus.appender.file=log4cplus::FileAppender\n"
    L"log4cplus.appender.file.File=${LogFolder}/SolidWorks.log";

constexpr wchar_t kSharedFile[] =
    L"log4cplus.rootLogger=TRACE, file\n"
    L"log4cplus.appender.file=tavo::SharedFileAppender\n"
    L"log4cplus.appender.file.File=${LogFolder}/SolidWorks.log";

/// Tests that hold for both kinds of file.
class Events : public testing::TestWithParam<const wchar_t*> {};

INSTANTIATE_TEST_SUITE_P(, Events, testing::Values(kPlainFile, kSharedFile),
                         [](const auto& file) { return file.index == 0 ? "PlainFile" : "SharedFile"; });

TEST_P(Events, ContainChannelLevelLineFunctionAndText) {
  LogFolder log;
  ASSERT_TRUE(log.StartWith(GetParam()));
  CLog::Print("file.cpp", 368, "CSolidWorksAddIn::PlmLogin", L"errormsg", 40000, L"first");
  CLog::Print("file.cpp", 69, "CDrawingHelper::InsertChildFile", L"infomsg", 20000, L"second");
  CLog::Print("file.cpp", 1, "F", L"a.channel.of.its.own", 30000, L"third");
  LogPlatformError(L"fourth", std::source_location());
  EXPECT_EQ(log.Lines(),
            (std::vector<std::wstring>{L"errormsg|ERROR|368|CSolidWorksAddIn::PlmLogin|first",
                                       L"infomsg|INFO|69|CDrawingHelper::InsertChildFile|second",
                                       L"a.channel.of.its.own|WARN|1|F|third", L"platform|ERROR|0||fourth"}));
}

TEST_P(Events, ContainTheSourceFile) {
  LogFolder log;
  ASSERT_TRUE(log.StartWith(std::wstring(GetParam()) +
                            L"\nlog4cplus.appender.other=log4cplus::FileAppender\n"
                            L"log4cplus.appender.other.File=${LogFolder}/other.log\n"
                            L"log4cplus.appender.other.layout=log4cplus::PatternLayout\n"
                            L"log4cplus.appender.other.layout.ConversionPattern=%F%n\n"
                            L"log4cplus.logger.errormsg=ERROR, other\n"));
  PrintError(L"text");
  EXPECT_EQ(log.Lines(L"other.log"), std::vector<std::wstring>{L"C:\\source\\solidworks_add_in.cpp"});
}

TEST_P(Events, WithAnyTextAreWrittenWholeAsUtf8) {
  struct Text {
    std::wstring written;
    std::wstring read;
  };
  const std::wstring megabyte(1024 * 1024, L'x');
  std::wstring wide_megabyte;
  for (int i = 0; i < 512 * 1024; ++i) wide_megabyte += L"\U0001F529";
  const Text texts[] = {
      {L"plain", L"plain"},
      {L"", L""},
      {L"当前未加载模型，请加载有效模型后再试", L"当前未加载模型，请加载有效模型后再试"},
      {L"emoji \U0001F529 and \U0001F600", L"emoji \U0001F529 and \U0001F600"},
      {L"lone \xD83D high, lone \xDD29 low", L"lone \xFFFD high, lone \xFFFD low"},
      {L"at the end \xD83D", L"at the end \xFFFD"},
      {L"100% of %s and %n stay", L"100% of %s and %n stay"},
      {megabyte, megabyte},
      {wide_megabyte, wide_megabyte},
      {L"after all of these", L"after all of these"},
  };
  LogFolder log;
  ASSERT_TRUE(log.StartWith(GetParam()));
  for (const Text& text : texts) PrintError(text.written);

  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), std::size(texts));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_TRUE(lines[i] == L"errormsg|ERROR|368|CSolidWorksAddIn::PlmLogin|" + texts[i].read)
        << "text " << i;
  }
}

TEST_P(Events, EndWithTheSystemsLineEnd) {
  LogFolder log;
  ASSERT_TRUE(log.StartWith(GetParam()));
  PrintError(L"two\nlines");
  EXPECT_EQ(log.Folder().Read(L"SolidWorks.log"),
            "errormsg|ERROR|368|CSolidWorksAddIn::PlmLogin|two\r\nlines\r\n");
}

TEST_P(Events, OfSeveralThreadsAreAllWritten) {
  LogFolder log;
  ASSERT_TRUE(log.StartWith(GetParam()));
  std::array<std::thread, 8> threads;
  for (std::thread& thread : threads) {
    thread = std::thread([] {
      for (int event = 0; event < 100; ++event) PrintError(L"text");
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(log.Lines(),
            std::vector<std::wstring>(800, L"errormsg|ERROR|368|CSolidWorksAddIn::PlmLogin|text"));
}

TEST(EventsWithoutALog, AreNotWrittenToTheFile) {
  LogFolder log;
  PrintError(L"before");
  ASSERT_TRUE(log.StartWith(kPlainFile));
  PrintError(L"between");
  log.Stop();
  PrintError(L"after");
  EXPECT_EQ(log.Lines(), std::vector<std::wstring>{L"errormsg|ERROR|368|CSolidWorksAddIn::PlmLogin|between"});
}

TEST(EventsWithoutASourceLocation, AreWritten) {
  LogFolder log;
  ASSERT_TRUE(log.StartWith(kPlainFile));
  CLog::Print(nullptr, 0, nullptr, L"errormsg", 40000, L"text");
  EXPECT_EQ(log.Lines(), std::vector<std::wstring>{L"errormsg|ERROR|0||text"});
}

TEST(Initializer, DoesNothingTheSecondTime) {
  LogFolder log;
  EXPECT_FALSE(CLogInitializer::Initialized());
  ASSERT_TRUE(log.StartWith(kPlainFile));
  EXPECT_TRUE(CLogInitializer::Initialized());
  {
    const TempFolder other;
    CLogInitializer second;
    EXPECT_TRUE(second.Initialize(other.Path(), L"SolidWorks", other.Path(L"Log4cplus.properties")));
    PrintError(L"text");
    EXPECT_TRUE(other.List().empty());
  }
  EXPECT_TRUE(CLogInitializer::Initialized()) << "only the object that started the log shuts it down";
  PrintError(L"text");
  EXPECT_EQ(log.Lines().size(), 2u);
  log.Stop();
  EXPECT_FALSE(CLogInitializer::Initialized());
}

TEST(Initializer, CanStartAgainAfterAShutdown) {
  for (int round = 0; round < 3; ++round) {
    LogFolder log;
    ASSERT_TRUE(log.StartWith(kPlainFile));
    PrintError(L"text");
    EXPECT_EQ(log.Lines().size(), 1u);
  }
}
}  // namespace
