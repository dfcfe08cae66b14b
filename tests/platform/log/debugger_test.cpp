// Events that cannot be written to the log go to the debugger.
#include <gtest/gtest.h>

#include <windows.h>

#include "base/unique_handle.h"
#include "log_folder.h"

namespace {

// The exceptions with which the system passes text to a debugger: wide text, and ANSI text if nobody handles
// the first one. Wine has the second one only.
constexpr DWORD kWideText = 0x4001000A;
constexpr DWORD kAnsiText = 0x40010006;

/// Collects what this process writes to the debugger.
class DebuggerOutput {
 public:
  DebuggerOutput() : m_handler(AddVectoredExceptionHandler(1, &OnException)) { Lines().clear(); }
  DebuggerOutput(const DebuggerOutput&) = delete;
  DebuggerOutput& operator=(const DebuggerOutput&) = delete;
  ~DebuggerOutput() { RemoveVectoredExceptionHandler(m_handler); }

  static std::vector<std::wstring>& Lines() {
    static std::vector<std::wstring> lines;
    return lines;
  }

 private:
  static LONG CALLBACK OnException(EXCEPTION_POINTERS* pointers) {
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode != kWideText && record.ExceptionCode != kAnsiText)
      return EXCEPTION_CONTINUE_SEARCH;
    if (record.ExceptionCode == kWideText) {
      Lines().emplace_back(reinterpret_cast<const wchar_t*>(record.ExceptionInformation[1]));
    } else {
      const std::string_view ansi(reinterpret_cast<const char*>(record.ExceptionInformation[1]));
      Lines().emplace_back(ansi.begin(), ansi.end());  // the tests write ASCII
    }
    return EXCEPTION_CONTINUE_EXECUTION;
  }

  void* m_handler;
};

TEST(DebuggerGetsEvents, WithTheReasonIfTheLogFolderCannotBeMade) {
  const TempFolder temp;
  temp.Write(L"log", "a file in the way");
  const std::wstring folder = temp.Path(L"log");
  const DebuggerOutput output;
  CLogInitializer initializer;
  ASSERT_TRUE(initializer.Initialize(folder, L"SolidWorks", folder + L"/Log4cplus.properties"));

  PrintError(L"first");
  PrintError(L"second");

  const std::vector<std::wstring>& lines = output.Lines();
  ASSERT_EQ(lines.size(), 3u) << testing::PrintToString(lines);
  EXPECT_TRUE(lines[0].starts_with(L"the log file " + folder + L"\\SolidWorks.log cannot be written: "))
      << testing::PrintToString(lines[0]);
  EXPECT_TRUE(lines[1].ends_with(L"ERROR errormsg CSolidWorksAddIn::PlmLogin:368 - first\n"));
  EXPECT_TRUE(lines[2].ends_with(L"ERROR errormsg CSolidWorksAddIn::PlmLogin:368 - second\n"));
}

TEST(DebuggerGetsEvents, WhileTheFileCannotBeOpened) {
  LogFolder log;
  log.Folder().Write(L"SolidWorks.log", "");
  ASSERT_TRUE(log.Start());
  const DebuggerOutput output;
  {
    const UniqueHandle holder = OwnHandle(CreateFileW(log.Folder().Path(L"SolidWorks.log").c_str(),
                                                      GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(holder);
    PrintError(L"held");
  }
  ASSERT_EQ(output.Lines().size(), 2u) << testing::PrintToString(output.Lines());
  EXPECT_NE(output.Lines()[0].find(L"cannot be written"), std::wstring::npos);
  EXPECT_TRUE(output.Lines()[1].ends_with(L"held\n"));

  PrintError(L"written");
  EXPECT_EQ(output.Lines().size(), 2u);
  EXPECT_EQ(log.Lines().size(), 1u);
}

TEST(DebuggerGetsEvents, OfAConfigurationWithoutAWritableFile) {
  LogFolder log;
  log.Folder().MakeFolder(L"SolidWorks.log");
  log.WriteProperties(
      L"log4cplus.rootLogger=INFO, file\n"
      L"log4cplus.appender.file=log4cplus::FileAppender\n"
      L"log4cplus.appender.file.File=SolidWorks.log\n");
  const DebuggerOutput output;
  ASSERT_TRUE(log.Start());
  PrintError(L"text");

  const std::vector<std::wstring>& lines = output.Lines();
  ASSERT_EQ(lines.size(), 3u) << testing::PrintToString(lines);
  EXPECT_NE(lines[0].find(L"cannot be written"), std::wstring::npos);
  EXPECT_NE(lines[1].find(L"log4cplus.appender.file.File: "), std::wstring::npos);
  EXPECT_TRUE(lines[2].ends_with(L"text\n"));
}

TEST(DebuggerGetsEvents, IfNoLogIsRunning) {
  const DebuggerOutput output;
  PrintError(L"before");
  LogFolder log;
  ASSERT_TRUE(log.Start());
  PrintError(L"between");
  log.Stop();
  CLog::Print(nullptr, 0, nullptr, L"infomsg", 20000, L"after");
  EXPECT_EQ(output.Lines(),
            (std::vector<std::wstring>{L"ERROR errormsg CSolidWorksAddIn::PlmLogin:368 - before\n",
                                       L"INFO infomsg :0 - after\n"}));
}

TEST(DebuggerGetsEvents, WithTheReasonOnceIfThereIsNoLogFolder) {
  LogFolder().Start();  // a log that runs ends an earlier failure
  const DebuggerOutput output;
  CLogInitializer initializer;
  EXPECT_FALSE(initializer.Initialize(L"", L"SolidWorks", L"/Log4cplus.properties"));
  EXPECT_FALSE(initializer.Initialize(L"", L"SolidWorks", L"/Log4cplus.properties"));
  PrintError(L"text");

  ASSERT_EQ(output.Lines().size(), 2u) << testing::PrintToString(output.Lines());
  EXPECT_NE(output.Lines()[0].find(L"there is no log folder"), std::wstring::npos);
  EXPECT_TRUE(output.Lines()[1].ends_with(L"text\n"));
}

TEST(DebuggerGetsEvents, OnlyIfTheyCannotBeWritten) {
  LogFolder log;
  ASSERT_TRUE(log.Start());
  const DebuggerOutput output;
  PrintError(L"text");
  EXPECT_EQ(output.Lines(), std::vector<std::wstring>{});
  EXPECT_EQ(log.Lines().size(), 1u);
}

}  // namespace
