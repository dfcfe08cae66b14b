// A host that is killed while it covers a component: the download and the old content are whole at any
// moment, and covering once more brings the new content. What an end inside the copy leaves is pinned, too.
#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <set>

#include "case_name.h"
#include "child_process.h"
#include "killed_session.h"

namespace {

constexpr int kTenths = 10;

/// A file with content that no test wrote, such as a part of a download.
constexpr const wchar_t* kPart = L"?";

using State = Texts;

/// A download, and the files after each step that changes them.
struct Covering {
  const char* name;
  const wchar_t* download;
  bool has_older_backup;  ///< of the component's name
  std::vector<State> states;
};

class KilledHost : public CoveringSession {
 protected:
  KilledHost() {
    cad_host::ModelFile assembly;
    assembly.components = {{.name = L"A-1", .path = At(L"prj\\A.sldprt"), .position = {}}};
    m_top = MakeModel(L"Top.sldasm", assembly);
    ConnectAndLogIn();
  }

  /// Gives all files the content from before covering.
  void PutBack(const wchar_t* download, bool has_older_backup) {
    for (const wchar_t* left : {L"dl\\temp\\A.sldprt", L"prj\\A.sldprt", L"prj\\B.sldprt"}) {
      DeleteFileW(At(left).c_str());
    }
    RemoveDirectoryW(At(L"dl\\temp").c_str());
    if (has_older_backup) Put(L"dl\\temp\\A.sldprt", L"older");
    Put(L"prj\\A.sldprt", L"old");
    Put(download, L"new");
  }

  /// Covers in another process, which is killed at `end`.
  void CoverAndDieAt(const wchar_t* download, const End& end) {
    const ChildProcess session(KillArguments(m_top, At(download), end));
    ASSERT_EQ(session.Wait(), kKilled) << Utf8(end.Text());
    ++m_ends;
  }

  /// The content of a file by its label; empty if there is no file.
  std::wstring ContentOf(const std::wstring& name) const {
    for (const std::wstring& file : Files()) {
      if (file.starts_with(name + L" = ")) return file.substr(name.size() + 3);
    }
    return {};
  }

  std::wstring m_top;
  int m_ends = 0;
};

class KilledAtACall : public KilledHost, public testing::WithParamInterface<Covering> {
 protected:
  void PutBack() { KilledHost::PutBack(GetParam().download, GetParam().has_older_backup); }

  /// Covers once more and succeeds: the files are as after the last step, but that the backup is what was
  /// in the component's place.
  void ExpectSecondRun(const std::wstring& what) {
    State expected = GetParam().states.back();
    const std::wstring replaced = ContentOf(L"prj\\A.sldprt");
    const bool is_exchange = std::wstring(GetParam().download) == L"dl\\A.sldprt";
    if (is_exchange && !replaced.empty()) {
      std::replace(expected.begin(), expected.end(), std::wstring(L"dl\\temp\\A.sldprt = old"),
                   L"dl\\temp\\A.sldprt = " + replaced);
    }
    EXPECT_TRUE(CoverFirst(m_top, At(GetParam().download))) << Utf8(what);
    EXPECT_EQ(Files(), expected) << "covered again after an end " << Utf8(what);
  }
};

TEST_P(KilledAtACall, LeavesTheOldOrTheNewContentCompleteAndCanCoverAgain) {
  const std::vector<State>& states = GetParam().states;
  PutBack();
  const std::vector<End> ends = RecordEnds(m_top, At(GetParam().download));
  std::set<State> seen;
  for (const End& end : ends) {
    PutBack();
    CoverAndDieAt(GetParam().download, end);
    const State files = Files();
    EXPECT_EQ(std::count(states.begin(), states.end(), files), 1)
        << "killed " << Utf8(end.Text()) << ": " << testing::PrintToString(files);
    seen.insert(files);
    ExpectSecondRun(end.Text());
  }
  EXPECT_EQ(seen.size(), states.size()) << "not killed in every state between two steps";
  std::cout << GetParam().name << ": killed at " << m_ends << " moments\n";
}

INSTANTIATE_TEST_SUITE_P(
    , KilledAtACall,
    testing::Values(
        Covering{
            "SameName",
            L"dl\\A.sldprt",
            false,
            {{L"dl\\A.sldprt = new", L"prj\\A.sldprt = old"},
             {L"dl\\A.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old"},
             {L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = old"},
             {L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = old", L"prj\\A.sldprt = new"}}},
        Covering{
            "SameNameWithAnOlderBackup",
            L"dl\\A.sldprt",
            true,
            {{L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = older", L"prj\\A.sldprt = old"},
             {L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = old"},
             {L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = old", L"prj\\A.sldprt = new"}}},
        Covering{"OtherName",
                 L"dl\\B.sldprt",
                 false,
                 {{L"dl\\B.sldprt = new", L"prj\\A.sldprt = old"},
                  {L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old"},
                  {L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old", L"prj\\B.sldprt = new"}}}),
    CaseName<Covering>);

class KilledInsideTheCopy : public KilledHost {
 protected:
  static constexpr const wchar_t* kDownload = L"dl\\A.sldprt";

  ~KilledInsideTheCopy() override { std::cout << "killed inside the copy " << m_ends << " times\n"; }

  void CoverAndDieInTheCopy(int tenths) {
    CoverAndDieAt(kDownload, {End::Place::kInside, L"CopyFileW", tenths});
  }

  static State FilesWith(const std::wstring& component, const std::wstring& backup) {
    return {L"dl\\A.sldprt = new", L"dl\\temp\\", L"dl\\temp\\A.sldprt = " + backup,
            L"prj\\A.sldprt = " + component};
  }
};

/// The old content is in the backup after the first end; covering again moves the part that was written
/// there.
TEST_F(KilledInsideTheCopy, LeavesTheOldContentInTheBackupUntilItCoversAgain) {
  for (int tenths = 0; tenths < kTenths; ++tenths) {
    PutBack(kDownload, false);
    CoverAndDieInTheCopy(tenths);
    EXPECT_EQ(Files(), FilesWith(kPart, L"old")) << tenths;
    EXPECT_TRUE(CoverFirst(m_top, At(kDownload))) << tenths;
    EXPECT_EQ(Files(), FilesWith(L"new", kPart)) << tenths;
  }
}

TEST_F(KilledInsideTheCopy, TwiceStillCoversAtTheThirdTime) {
  for (int tenths = 0; tenths < kTenths; ++tenths) {
    PutBack(kDownload, false);
    CoverAndDieInTheCopy(kTenths - 1 - tenths);
    CoverAndDieInTheCopy(tenths);
    EXPECT_EQ(Files(), FilesWith(kPart, kPart)) << tenths;
    EXPECT_TRUE(CoverFirst(m_top, At(kDownload))) << tenths;
    EXPECT_EQ(Files(), FilesWith(L"new", kPart)) << tenths;
  }
}

/// Nothing is moved here: the component's own file is untouched.
TEST_F(KilledInsideTheCopy, UnderAnotherNameLeavesTheComponentsFile) {
  constexpr const wchar_t* kOther = L"dl\\B.sldprt";
  for (int tenths = 0; tenths < kTenths; ++tenths) {
    PutBack(kOther, false);
    CoverAndDieAt(kOther, {End::Place::kInside, L"CopyFileW", tenths});
    EXPECT_EQ(ContentOf(kOther), L"new") << tenths;
    EXPECT_EQ(ContentOf(L"prj\\A.sldprt"), L"old") << tenths;
    EXPECT_EQ(ContentOf(L"prj\\B.sldprt"), kPart) << tenths;
    EXPECT_TRUE(CoverFirst(m_top, At(kOther))) << tenths;
    EXPECT_EQ(ContentOf(L"prj\\B.sldprt"), L"new") << tenths;
  }
}

}  // namespace
