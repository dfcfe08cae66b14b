// A download of the component's own file name: the files are exchanged while the component is suppressed.
#include <gtest/gtest.h>

#include "covering_fixture.h"

namespace {

class SameName : public CoveringTest {
 protected:
  SameName() {
    Put(L"prj\\A.sldprt", L"old");
    m_download = Put(L"dl\\A.sldprt", L"new");
  }

  /// The line of the command after the one of the exchange.
  std::wstring SwapFailed(const std::wstring& code) const {
    return CoverLine(1120, L"SwapFile failed. Current model file: " + At(L"prj\\A.sldprt") +
                               L", download file: " + m_download + L"<hr=0x" + code + L">");
  }

  std::wstring m_download;
};

TEST_F(SameName, ExchangesTheFileWhileTheComponentIsSuppressed) {
  Assemble(L"prj\\A.sldprt");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(HostCalls(),
            (std::vector<std::wstring>{
                L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()",
                L"IModelDoc2::QueryInterface(IAssemblyDoc)()", L"IModelDoc2::get_ISelectionManager()",
                L"ISelectionMgr::GetSelectedObject6(1, -1)", L"IComponent2::QueryInterface(IComponent2)()",
                L"IComponent2::GetPathName()", L"IComponent2::SetSuppression2(0)",
                L"IComponent2::SetSuppression2(3)"}));
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\A.sldprt = new", L"dl\\temp\\",
                                                L"dl\\temp\\A.sldprt = old", L"prj\\A.sldprt = new"}));
  EXPECT_FALSE(m_component->IsSuppressed());
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

TEST_F(SameName, KeepsTheLastFileOnlyWhereAnOlderOneIsInTheBackupFolder) {
  Put(L"dl\\temp\\A.sldprt", L"older");
  Put(L"dl\\temp\\C.sldprt", L"other");
  Assemble(L"prj\\A.sldprt");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(Files(),
            (std::vector<std::wstring>{L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = old",
                                       L"dl\\temp\\C.sldprt = other", L"prj\\A.sldprt = new"}));
}

/// The backup keeps the component's spelling of the name, the new file has the download's.
TEST_F(SameName, IsTheSameWithoutRegardToCase) {
  Put(L"dl\\ÄB 件.sldprt", L"newer");
  Put(L"prj\\äb 件.SLDPRT", L"older");
  Assemble(L"prj\\äb 件.SLDPRT");
  EXPECT_EQ(Cover({At(L"dl\\ÄB 件.sldprt")}).result, S_OK);
  EXPECT_EQ(Files(), (std::vector<std::wstring>{
                         L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\äb 件.SLDPRT = older",
                         L"dl\\ÄB 件.sldprt = newer", L"prj\\A.sldprt = old", L"prj\\ÄB 件.sldprt = newer"}));
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"newer"));
}

TEST_F(SameName, IsMovedNowhereWhereTheComponentHasNoFileAnyMore) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Before(L"IComponent2::SetSuppression2", 1, [this] {
    m_component->hold = nullptr;
    DeleteFileW(At(L"prj\\A.sldprt").c_str());
  });
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(Files(),
            (std::vector<std::wstring>{L"dl\\A.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = new"}));
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

TEST_F(SameName, StaysUntouchedWhereTheComponentCannotBeSuppressed) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Fail(L"IComponent2::SetSuppression2", 1, E_FAIL);
  CoverTold(m_download, kFailed);
  EXPECT_EQ(m_home.LogLines(),
            std::vector<std::wstring>{CoverLine(
                1109, L"swSelectedComponent->SetSuppression2 suppress model failed.<hr=0x80004005>")});
  EXPECT_EQ(Files(),
            (std::vector<std::wstring>{L"dl\\A.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old"}));
  EXPECT_EQ(m_host->GetJournal().Calls(L"IComponent2::SetSuppression2").size(), 1u);
}

TEST_F(SameName, IsExchangedAlsoWhereResolvingFails) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Fail(L"IComponent2::SetSuppression2", 2, E_UNEXPECTED);
  CoverTold(m_download, kFailed);
  EXPECT_EQ(m_home.LogLines(),
            std::vector<std::wstring>{CoverLine(
                1130, L"swSelectedComponent->SetSuppression2 resolve model failed.<hr=0x8000ffff>")});
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\A.sldprt = new", L"dl\\temp\\",
                                                L"dl\\temp\\A.sldprt = old", L"prj\\A.sldprt = new"}));
}

/// Results that are no failure by their code.
TEST_F(SameName, TakesAnySuccessCodeOfTheSuppressionAsDone) {
  Assemble(L"prj\\A.sldprt");
  m_component->hold = nullptr;
  m_host->GetFaults().ReturnFalse(L"IComponent2::SetSuppression2", 1);
  m_host->GetFaults().ReturnFalse(L"IComponent2::SetSuppression2", 2);
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
  EXPECT_EQ(Files().back(), L"prj\\A.sldprt = new");
}

/// Another instance of the same file keeps it open: nothing is lost, the selected one stays suppressed.
TEST_F(SameName, StaysWhereItIsWhileAnotherInstanceHoldsTheFile) {
  Assemble(L"prj\\A.sldprt");
  const auto second = AddComponent(L"prj\\A.sldprt");
  CoverTold(m_download, kFailed);
  EXPECT_EQ(m_home.LogLines(),
            (std::vector<std::wstring>{
                SwapLine(1519, L"MoveFileEx from " + At(L"prj\\A.sldprt") + L" to " +
                                   At(L"dl\\temp\\A.sldprt") + L" failed. Get Last Error: 32<hr=0xa3012006>"),
                SwapFailed(L"a3012006")}));
  EXPECT_EQ(Files(),
            (std::vector<std::wstring>{L"dl\\A.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old"}));
  EXPECT_TRUE(m_component->IsSuppressed());
  EXPECT_FALSE(second->IsSuppressed());
}

TEST_F(SameName, LeavesTheOldFileInTheBackupOnlyWhereTheDownloadIsMissing) {
  Assemble(L"prj\\A.sldprt");
  DeleteFileW(m_download.c_str());
  CoverTold(m_download, kFailed);
  EXPECT_EQ(m_home.LogLines(),
            (std::vector<std::wstring>{
                SwapLine(1526, L"GetFileAttributes failed. Get Last Error: 2<hr=0xa3012003>"),
                SwapFailed(L"a3012003")}));
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\temp\\", L"dl\\temp\\A.sldprt = old"}));
  EXPECT_TRUE(m_component->IsSuppressed());
  EXPECT_EQ(m_host->GetJournal().Calls(L"IComponent2::SetSuppression2").size(), 1u);
}

/// A download that is the component's own file is gone when it is looked for: it lies in the backup.
TEST_F(SameName, OfTheVeryFileEndsInTheBackupFolder) {
  Assemble(L"prj\\A.sldprt");
  m_download = At(L"prj\\A.sldprt");
  CoverTold(m_download, kFailed);
  EXPECT_EQ(m_home.LogLines(),
            (std::vector<std::wstring>{
                SwapLine(1526, L"GetFileAttributes failed. Get Last Error: 2<hr=0xa3012003>"),
                SwapFailed(L"a3012003")}));
  EXPECT_EQ(Files(),
            (std::vector<std::wstring>{L"dl\\A.sldprt = new", L"prj\\temp\\", L"prj\\temp\\A.sldprt = old"}));
  EXPECT_TRUE(m_component->IsSuppressed());
}

/// A component whose file lies where its backup would is overwritten: the move of a file onto itself
/// succeeds and keeps nothing.
TEST_F(SameName, OfAFileInTheBackupFolderKeepsNoBackup) {
  Put(L"dl\\temp\\A.sldprt", L"in the backup folder");
  Assemble(L"dl\\temp\\A.sldprt");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\A.sldprt = new", L"dl\\temp\\",
                                                L"dl\\temp\\A.sldprt = new", L"prj\\A.sldprt = old"}));
  EXPECT_FALSE(m_component->IsSuppressed());
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

/// Folders may be written with either separator; what is added is a backslash.
TEST_F(SameName, TakesADownloadWrittenWithSlashes) {
  Assemble(L"prj\\A.sldprt");
  std::wstring slashed = m_download;
  for (wchar_t& character : slashed) character = character == L'\\' ? L'/' : character;
  const std::wstring folder = slashed.substr(0, slashed.rfind(L'/'));
  m_folder.Write(L"dl\\temp", "in the way");
  EXPECT_EQ(Cover({slashed}).result, S_OK);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{CoverLine(
                                   1049, L"CFileHelper::CreateFolder:" + folder + L"\\temp<hr=0xa3012012>")});
  DeleteFileW(At(L"dl\\temp").c_str());
  EXPECT_EQ(Cover({slashed}).result, S_OK);
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
}

}  // namespace
