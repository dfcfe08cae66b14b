#include <gtest/gtest.h>

#include <windows.h>

#include <future>
#include <memory>
#include <thread>

#include "handle_count.h"
#include "log_folder.h"
#include "thread_count.h"

namespace {
struct LibraryFreer {
  using pointer = HMODULE;
  void operator()(HMODULE library) const { FreeLibrary(library); }
};

/// The DLL that logs, loaded for the life of the object.
class LogModule {
 public:
  LogModule() : m_library(LoadLibraryW(L"log_module.dll")) {
    EXPECT_NE(m_library, nullptr) << GetLastError();
  }

  bool Start(const TempFolder& folder) const {
    return Function<bool(const wchar_t*)>("StartLog")(folder.Path().c_str());
  }
  void Print(const wchar_t* message) const { Function<void(const wchar_t*)>("PrintEvent")(message); }

 private:
  template <typename Signature>
  Signature* Function(const char* name) const {
    return reinterpret_cast<Signature*>(reinterpret_cast<void*>(GetProcAddress(m_library.get(), name)));
  }

  std::unique_ptr<void, LibraryFreer> m_library;
};

void LoadLogAndUnload(const LogFolder& log, const wchar_t* message = L"text") {
  const LogModule module;
  EXPECT_TRUE(module.Start(log.Folder()));
  module.Print(message);
}

constexpr wchar_t kPlainFile[] =
    L"log4cplus.rootLogger=TRACE, file\n"
    L"log4cplus.appender.file=log4cplus::FileAppender\n"
    L"log4cplus.appender.file.File=${LogFolder}/SolidWorks.log\n"
    L"log4cplus.appender.file.Append=true";

// The compiler's thread library leaks four events or semaphores with each module that is unloaded.
constexpr std::size_t kHandlesOfTheThreadLibrary = 4;

TEST(ModuleThatLogs, UnloadsAHundredTimesWithoutLeakingAThreadOrAHandle) {
  const LogFolder built_in, plain_file;
  plain_file.WriteProperties(kPlainFile);
  LoadLogAndUnload(built_in);
  LoadLogAndUnload(plain_file);
  const std::size_t handles = HandleCount();
  const int threads = ThreadCount();

  for (int round = 1; round < 100; ++round) {
    LoadLogAndUnload(built_in);
    LoadLogAndUnload(plain_file);
  }
  EXPECT_EQ(GetModuleHandleW(L"log_module.dll"), nullptr);
  EXPECT_LE(HandleCount(), handles + 2 * 99 * kHandlesOfTheThreadLibrary);
  EXPECT_LE(ThreadCount(), threads);
  EXPECT_EQ(built_in.Lines().size(), 100u);
  EXPECT_EQ(plain_file.Lines().size(), 100u);
}

TEST(ModuleThatLogs, ClosesItsFileWhenItIsUnloaded) {
  const LogFolder log;
  log.WriteProperties(kPlainFile);
  LoadLogAndUnload(log);
  EXPECT_TRUE(DeleteFileW(log.Folder().Path(L"SolidWorks.log").c_str())) << GetLastError();
}

TEST(ModuleThatLogs, UnloadsEvenIfALocaleCannotEncodeTheText) {
  const LogFolder log;
  log.WriteProperties(
      L"log4cplus.rootLogger=TRACE, file, second\n"
      L"log4cplus.appender.file=log4cplus::FileAppender\n"
      L"log4cplus.appender.file.File=${LogFolder}\\SolidWorks.log\n"
      L"log4cplus.appender.file.Locale=CLASSIC\n"
      L"log4cplus.appender.second=log4cplus::FileAppender\n"
      L"log4cplus.appender.second.File=${LogFolder}\\second.log\n"
      L"log4cplus.appender.second.Locale=CLASSIC\n");
  LoadLogAndUnload(log, L"图纸");
  EXPECT_EQ(GetModuleHandleW(L"log_module.dll"), nullptr);
  EXPECT_TRUE(DeleteFileW(log.Folder().Path(L"SolidWorks.log").c_str()));
  EXPECT_TRUE(DeleteFileW(log.Folder().Path(L"second.log").c_str()));
}

TEST(ModuleThatLogs, CanBeUnloadedWhileAThreadThatLoggedStillRuns) {
  const LogFolder log;
  std::promise<void> logged, unloaded;
  std::thread thread;
  {
    const LogModule module;
    ASSERT_TRUE(module.Start(log.Folder()));
    thread = std::thread([&] {
      module.Print(L"text");
      logged.set_value();
      unloaded.get_future().wait();
    });
    logged.get_future().wait();
  }
  unloaded.set_value();
  thread.join();
  EXPECT_EQ(log.Lines().size(), 1u);
}

// A host that waited inside FreeLibrary for a thread of an appender would wait forever.
TEST(ModuleThatLogs, UnloadsEvenIfTheFileAsksForAppendersWithThreads) {
  const LogFolder log;
  log.WriteProperties(
      L"log4cplus.rootLogger=TRACE, file, queue, remote, system\n"
      L"log4cplus.appender.file=log4cplus::FileAppender\n"
      L"log4cplus.appender.file.File=${LogFolder}\\SolidWorks.log\n"
      L"log4cplus.appender.queue=log4cplus::AsyncAppender\n"
      L"log4cplus.appender.queue.Appender=log4cplus::NullAppender\n"
      L"log4cplus.appender.remote=log4cplus::SocketAppender\n"
      L"log4cplus.appender.remote.host=localhost\n"
      L"log4cplus.appender.remote.port=1\n"
      L"log4cplus.appender.system=log4cplus::SysLogAppender\n"
      L"log4cplus.appender.system.host=localhost\n"
      L"log4cplus.appender.system.udp=false\n"
      L"log4cplus.threadPoolSize=4\n");
  LoadLogAndUnload(log);
  EXPECT_EQ(GetModuleHandleW(L"log_module.dll"), nullptr);
  EXPECT_EQ(log.Lines().size(), 4u);
}
}  // namespace
