// A download with the same name as the component's file: the files are exchanged while the component is
// suppressed.
#include <gtest/gtest.h>

#include "covering_fixture.h"
#include "list_difference.h"
#include "result_codes.h"

namespace {

class SameName : public CoveringFixture {
 protected:
  SameName() {
    Put(L"prj\\A.sldprt", L"old");
    m_download = Put(L"dl\\A.sldprt", L"new");
  }

  /// The line of the command, which follows the line of the exchange.
  std::wstring SwapFailed(HRESULT code) const {
    return SwapFailedLine(At(L"prj\\A.sldprt"), m_download, code);
  }

  std::wstring m_download;
};

TEST_F(SameName, ExchangesTheFileWhileTheComponentIsSuppressed) {
  Assemble(L"prj\\A.sldprt");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_SAME_ENTRIES(
      HostCalls(), Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()",
                         L"IModelDoc2::QueryInterface(IAssemblyDoc)()",
                         L"IModelDoc2::get_ISelectionManager()", L"ISelectionMgr::GetSelectedObject6(1, -1)",
                         L"IComponent2::QueryInterface(IComponent2)()", L"IComponent2::GetPathName()",
                         L"IComponent2::SetSuppression2(0)", L"IComponent2::SetSuppression2(3)"});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = old",
                                     L"prj\\A.sldprt = new"});
  EXPECT_FALSE(m_component->IsSuppressed());
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(SameName, ReplacesAnOlderBackup) {
  Put(L"dl\\temp\\A.sldprt", L"older");
  Put(L"dl\\temp\\C.sldprt", L"other");
  Assemble(L"prj\\A.sldprt");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = old",
                                     L"dl\\temp\\C.sldprt = other", L"prj\\A.sldprt = new"});
}

/// The backup has the name of the component's file, the new file has the download's name.
TEST_F(SameName, IsComparedWithoutRegardToCase) {
  Put(L"dl\\ÄB 件.sldprt", L"newer");
  Put(L"prj\\äb 件.SLDPRT", L"older");
  Assemble(L"prj\\äb 件.SLDPRT");
  EXPECT_EQ(Cover({At(L"dl\\ÄB 件.sldprt")}).result, S_OK);
  EXPECT_SAME_ENTRIES(
      Files(), Texts{L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\äb 件.SLDPRT = older",
                     L"dl\\ÄB 件.sldprt = newer", L"prj\\A.sldprt = old", L"prj\\ÄB 件.sldprt = newer"});
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"newer"));
}

TEST_F(SameName, IsCopiedWithoutABackupIfTheComponentsFileIsMissing) {
  m_host->GetQuirks().Set(cad_host::Quirk::kHeldFiles, false);
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Before(L"IComponent2::SetSuppression2", 1,
                             [this] { DeleteFileW(At(L"prj\\A.sldprt").c_str()); });
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = new"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(SameName, ChangesNoFileIfTheComponentCannotBeSuppressed) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Fail(L"IComponent2::SetSuppression2", 1, E_FAIL);
  CoverExpectingBox(m_download, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(),
            Texts{CoverLine(1109, L"swSelectedComponent->SetSuppression2 suppress model failed.", E_FAIL)});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old"});
  EXPECT_EQ(m_host->GetJournal().Calls(L"IComponent2::SetSuppression2").size(), 1u);
}

TEST_F(SameName, IsExchangedEvenIfResolvingFails) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Fail(L"IComponent2::SetSuppression2", 2, E_UNEXPECTED);
  CoverExpectingBox(m_download, shown::kReplacementFailed);
  EXPECT_EQ(
      m_home.LogLines(),
      Texts{CoverLine(1130, L"swSelectedComponent->SetSuppression2 resolve model failed.", E_UNEXPECTED)});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = old",
                                     L"prj\\A.sldprt = new"});
}

TEST_F(SameName, AcceptsAnySuccessCodeOfTheSuppression) {
  m_host->GetQuirks().Set(cad_host::Quirk::kHeldFiles, false);
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().ReturnFalse(L"IComponent2::SetSuppression2", 1);
  m_host->GetFaults().ReturnFalse(L"IComponent2::SetSuppression2", 2);
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_EQ(Files().back(), L"prj\\A.sldprt = new");
}

/// No file is lost, and the selected component stays suppressed.
TEST_F(SameName, IsNotExchangedWhileAnotherInstanceHasTheFileOpen) {
  Assemble(L"prj\\A.sldprt");
  const auto second = AddComponent(L"prj\\A.sldprt");
  CoverExpectingBox(m_download, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), (Texts{NotMovedLine(At(L"prj\\A.sldprt"), At(L"dl\\temp\\A.sldprt"), 32),
                                      SwapFailed(hr::kMoveToBackupFailed)}));
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old"});
  EXPECT_TRUE(m_component->IsSuppressed());
  EXPECT_FALSE(second->IsSuppressed());
}

TEST_F(SameName, LeavesTheOldFileOnlyInTheBackupIfTheDownloadIsMissing) {
  Assemble(L"prj\\A.sldprt");
  DeleteFileW(m_download.c_str());
  CoverExpectingBox(m_download, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(),
            (Texts{SwapLine(1526, L"GetFileAttributes failed. Get Last Error: 2", hr::kDownloadMissing),
                   SwapFailed(hr::kDownloadMissing)}));
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\temp\\", L"dl\\temp\\A.sldprt = old"});
  EXPECT_TRUE(m_component->IsSuppressed());
  EXPECT_EQ(m_host->GetJournal().Calls(L"IComponent2::SetSuppression2").size(), 1u);
}

/// If the download is the component's file itself, it is moved to the backup and then not found.
TEST_F(SameName, MovesTheFileToTheBackupIfBothPathsAreTheSame) {
  Assemble(L"prj\\A.sldprt");
  m_download = At(L"prj\\A.sldprt");
  CoverExpectingBox(m_download, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(),
            (Texts{SwapLine(1526, L"GetFileAttributes failed. Get Last Error: 2", hr::kDownloadMissing),
                   SwapFailed(hr::kDownloadMissing)}));
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"prj\\temp\\", L"prj\\temp\\A.sldprt = old"});
  EXPECT_TRUE(m_component->IsSuppressed());
}

/// Moving a file to its own path succeeds, and then the copy overwrites it.
TEST_F(SameName, KeepsNoBackupOfAFileInTheBackupFolder) {
  Put(L"dl\\temp\\A.sldprt", L"in the backup folder");
  Assemble(L"dl\\temp\\A.sldprt");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = new",
                                     L"prj\\A.sldprt = old"});
  EXPECT_FALSE(m_component->IsSuppressed());
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

/// What the add-in appends starts with a backslash.
TEST_F(SameName, AcceptsADownloadPathWithSlashes) {
  Assemble(L"prj\\A.sldprt");
  std::wstring slashed = m_download;
  for (wchar_t& character : slashed) character = character == L'\\' ? L'/' : character;
  const std::wstring folder = slashed.substr(0, slashed.rfind(L'/'));
  m_folder.Write(L"dl\\temp", "in the way");
  EXPECT_EQ(Cover({slashed}).result, S_OK);
  EXPECT_EQ(m_home.LogLines(), Texts{NoBackupFolderLine(folder + L"\\temp")});
  DeleteFileW(At(L"dl\\temp").c_str());
  EXPECT_EQ(Cover({slashed}).result, S_OK);
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
}

}  // namespace
