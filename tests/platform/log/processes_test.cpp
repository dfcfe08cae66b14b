#include <gtest/gtest.h>

#include <windows.h>

#include <map>

#include "base/unique_handle.h"
#include "log_folder.h"
#include "program_folder.h"

namespace {
// @param output an inheritable handle for the process's standard output and error, or null.
UniqueHandle StartWriter(const std::wstring& folder, const std::wstring& name, int count,
                         HANDLE output = nullptr) {
  std::wstring command = L"\"" + BesideTests(L"log_writer.exe") + L"\" \"" + folder + L"\" " + name + L" " +
                         std::to_wstring(count);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = output;
  PROCESS_INFORMATION process{};
  EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                             &process))
      << GetLastError();
  const UniqueHandle thread = OwnHandle(process.hThread);
  return OwnHandle(process.hProcess);
}

// Starts several processes that log at the same time, and waits for them.
// @return how many events of each process were written, in order.
std::map<std::wstring, int> RunWriters(const LogFolder& log, int processes, int events,
                                       const std::vector<std::wstring>& files) {
  std::vector<UniqueHandle> writers;
  writers.reserve(static_cast<std::size_t>(processes));
  for (int i = 0; i < processes; ++i) {
    writers.push_back(StartWriter(log.Folder().Path(), L"writer" + std::to_wstring(i), events));
  }
  for (const UniqueHandle& writer : writers) {
    EXPECT_EQ(WaitForSingleObject(writer.get(), 60'000), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(writer.get(), &code);
    EXPECT_EQ(code, 0u);
  }
  std::map<std::wstring, int> counts;
  for (const std::wstring& file : files) {
    for (const std::wstring& line : log.Lines(file)) {
      const auto name = line.rfind(L"writer");
      EXPECT_TRUE(name != std::wstring::npos && line.starts_with(L"errormsg|ERROR|1|F|writer"))
          << "an incomplete line: " << testing::PrintToString(line);
      if (name == std::wstring::npos) continue;
      const std::wstring writer = line.substr(name, line.find(L' ', name) - name);
      EXPECT_EQ(line.substr(name + writer.size() + 1), std::to_wstring(counts[writer]++));
    }
  }
  return counts;
}

constexpr wchar_t kSharedFile[] =
    L"log4cplus.rootLogger=TRACE, file\n"
    L"log4cplus.appender.file=tavo::SharedFileAppender\n"
    L"log4cplus.appender.file.File=${LogFolder}/SolidWorks.log\n";

TEST(SeveralProcesses, ShareOneFileWithoutLosingAnEvent) {
  LogFolder log;
  log.WriteProperties(kSharedFile);
  const std::map<std::wstring, int> counts = RunWriters(log, 4, 250, {L"SolidWorks.log"});
  EXPECT_EQ(counts, (std::map<std::wstring, int>{
                        {L"writer0", 250}, {L"writer1", 250}, {L"writer2", 250}, {L"writer3", 250}}));
}

TEST(SeveralProcesses, LoseNoEventWhenTheFileIsFull) {
  LogFolder log;
  log.WriteProperties(std::wstring(kSharedFile) +
                      L"log4cplus.appender.file.MaxFileSize=8KB\n"
                      L"log4cplus.appender.file.MaxBackupIndex=100\n");
  std::vector<std::wstring> files;
  for (int number = 100; number > 0; --number) files.push_back(L"SolidWorks.log." + std::to_wstring(number));
  files.push_back(L"SolidWorks.log");

  const std::map<std::wstring, int> counts = RunWriters(log, 4, 250, files);
  EXPECT_TRUE(log.Folder().Exists(L"SolidWorks.log.2"));
  EXPECT_FALSE(log.Folder().Exists(L"SolidWorks.log.100"));
  EXPECT_FALSE(log.Folder().Exists(L"SolidWorks.log.lock"));
  EXPECT_EQ(counts, (std::map<std::wstring, int>{
                        {L"writer0", 250}, {L"writer1", 250}, {L"writer2", 250}, {L"writer3", 250}}));
}
TEST(ProcessThatLogs, PrintsNothingToItsStandardStreams) {
  LogFolder log;
  log.WriteProperties(
      L"log4cplus.rootLogger=INFO, file, misspelt, ${unclosed\n"
      L"log4cplus.logger.errormsg=NOSUCHLEVEL, file\n"
      L"log4cplus.appender.file=log4cplus::FileAppender\n"
      L"log4cplus.appender.file.File=Q:\\no\\such\\folder\\file.log\n"
      L"log4cplus.appender.misspelt=log4cplus::FielAppender\n");
  SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
  {
    const UniqueHandle output = OwnHandle(CreateFileW(log.Folder().Path(L"output").c_str(), GENERIC_WRITE, 0,
                                                      &inheritable, CREATE_NEW, 0, nullptr));
    ASSERT_TRUE(output);
    const UniqueHandle writer = StartWriter(log.Folder().Path(), L"writer", 10, output.get());
    EXPECT_EQ(WaitForSingleObject(writer.get(), 60'000), WAIT_OBJECT_0);
  }
  EXPECT_EQ(log.Folder().Read(L"output"), "");
}
}  // namespace
