#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <regex>

#include "base/unique_handle.h"
#include "log_folder.h"

namespace {
UniqueHandle Open(const std::wstring& path, DWORD share) {
  return OwnHandle(CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

TEST(DefaultSetUp, WritesAReadableLinePerEvent) {
  LogFolder log;
  ASSERT_TRUE(log.Start());
  PrintError(L"pResult is empty<hr=0xa3013005>");
  CLog::Print("C:\\source\\DrawingHelper.cpp", 69, "CDrawingHelper::InsertChildFile", L"infomsg", 20000,
              L"begins");

  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), 2u);
  const std::wstring start =
      LR"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} +)" + std::to_wstring(GetCurrentProcessId());
  EXPECT_TRUE(
      std::regex_match(lines[0], std::wregex(start + LR"( ERROR errormsg CSolidWorksAddIn::PlmLogin:368 - )"
                                                     LR"(pResult is empty<hr=0xa3013005>)")))
      << testing::PrintToString(lines[0]);
  EXPECT_TRUE(
      std::regex_match(lines[1], std::wregex(start + LR"( INFO  infomsg )"
                                                     LR"(CDrawingHelper::InsertChildFile:69 - begins)")))
      << testing::PrintToString(lines[1]);
}

TEST(DefaultSetUp, NamesTheFileAfterTheApplication) {
  LogFolder log;
  ASSERT_TRUE(log.Start(L"Other"));
  PrintError(L"text");
  EXPECT_EQ(log.Folder().List(), std::vector<std::wstring>{L"Other.log"});
}

TEST(DefaultSetUp, KeepsNoFileOpen) {
  LogFolder log;
  ASSERT_TRUE(log.Start());
  PrintError(L"before");
  EXPECT_TRUE(MoveFileW(log.Folder().Path(L"SolidWorks.log").c_str(), log.Folder().Path(L"moved").c_str()));
  PrintError(L"after");
  EXPECT_EQ(log.Lines(L"moved").size(), 1u);
  EXPECT_EQ(log.Lines().size(), 1u);
}

TEST(DefaultSetUp, AppendsToTheFileOfAnEarlierRun) {
  LogFolder log;
  log.Folder().Write(L"SolidWorks.log", "earlier\r\n");
  ASSERT_TRUE(log.Start());
  PrintError(L"later");
  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], L"earlier");
  EXPECT_TRUE(lines[1].ends_with(L"later"));
}

TEST(DefaultSetUp, KeepsFiveOldFilesOfTenMegabytes) {
  constexpr std::size_t kTenMegabytes = 10 * 1024 * 1024;
  LogFolder log;
  ASSERT_TRUE(log.Start());
  log.Folder().Write(L"SolidWorks.log.5", "the oldest");
  for (const wchar_t mark : std::wstring(L"1234567")) {
    log.Folder().Write(L"SolidWorks.log", std::string(kTenMegabytes - 20, static_cast<char>(mark)));
    PrintError(L"one line more");
  }
  EXPECT_EQ(log.Folder().List(),
            (std::vector<std::wstring>{L"SolidWorks.log", L"SolidWorks.log.1", L"SolidWorks.log.2",
                                       L"SolidWorks.log.3", L"SolidWorks.log.4", L"SolidWorks.log.5"}));
  EXPECT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Folder().Read(L"SolidWorks.log.1"), std::string(kTenMegabytes - 20, '7'));
  EXPECT_EQ(log.Folder().Read(L"SolidWorks.log.5"), std::string(kTenMegabytes - 20, '3'));
}

TEST(DefaultSetUp, KeepsWritingToAFullFileThatAnotherProgramHasOpen) {
  LogFolder log;
  ASSERT_TRUE(log.Start());
  log.Folder().Write(L"SolidWorks.log", std::string(10 * 1024 * 1024, 'x'));
  log.Folder().Write(L"SolidWorks.log.1", "old");
  {
    // An editor that allows other programs to write the file but not to rename it.
    const UniqueHandle editor =
        Open(log.Folder().Path(L"SolidWorks.log"), FILE_SHARE_READ | FILE_SHARE_WRITE);
    ASSERT_TRUE(editor);
    PrintError(L"first");
    PrintError(L"second");
    EXPECT_EQ(log.Lines().size(), 2u);
    EXPECT_EQ(log.Folder().Read(L"SolidWorks.log.1"), "old");
  }
  PrintError(L"third");
  EXPECT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines(L"SolidWorks.log.1").size(), 2u);
  EXPECT_EQ(log.Folder().Read(L"SolidWorks.log.2"), "old");
}

TEST(DefaultSetUp, MakesAMissingFolder) {
  const TempFolder temp;
  CLogInitializer initializer;
  const std::wstring folder = temp.Path(L"a\\log");
  ASSERT_TRUE(initializer.Initialize(folder, L"SolidWorks", folder + L"/Log4cplus.properties"));
  PrintError(L"text");
  EXPECT_TRUE(temp.Exists(L"a\\log\\SolidWorks.log"));
}

TEST(DefaultSetUp, WritesAsSoonAsTheFolderCanBeMade) {
  const TempFolder temp;
  temp.Write(L"log", "a file in the way");
  CLogInitializer initializer;
  ASSERT_TRUE(
      initializer.Initialize(temp.Path(L"log"), L"SolidWorks", temp.Path(L"log/Log4cplus.properties")));
  PrintError(L"lost");
  EXPECT_EQ(temp.Read(L"log"), "a file in the way");

  DeleteFileW(temp.Path(L"log").c_str());
  PrintError(L"kept");
  EXPECT_TRUE(temp.Read(L"log\\SolidWorks.log").ends_with("kept\r\n"));
}

TEST(DefaultSetUp, WritesAgainAfterAFileThatCouldNotBeWritten) {
  LogFolder log;
  ASSERT_TRUE(log.Start());
  {
    const UniqueHandle holder = Open(log.Folder().Write(L"SolidWorks.log", "content\r\n"), 0);
    ASSERT_TRUE(holder);
    PrintError(L"lost");
  }
  PrintError(L"kept");
  const std::vector<std::wstring> lines = log.Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], L"content");
  EXPECT_TRUE(lines[1].ends_with(L"kept"));
}

TEST(DefaultSetUp, WritesToAPathBeyondTwoHundredAndSixtyCharacters) {
  const TempFolder temp;
  const std::wstring name = std::wstring(120, L'd') + L"\\" + std::wstring(120, L'e') + L"\\log";
  CLogInitializer initializer;
  ASSERT_TRUE(
      initializer.Initialize(temp.Path(name), L"SolidWorks", temp.Path(name) + L"/Log4cplus.properties"));
  PrintError(L"text");
  EXPECT_TRUE(temp.Read(name + L"\\SolidWorks.log").ends_with("text\r\n"));
}

TEST(DefaultSetUp, FailsForAnEmptyFolderName) {
  CLogInitializer initializer;
  EXPECT_FALSE(initializer.Initialize(L"", L"SolidWorks", L"/Log4cplus.properties"));
  EXPECT_FALSE(CLogInitializer::Initialized());
}
}  // namespace
