// A host that is killed while it covers a component: no content is lost at any moment.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "case_name.h"
#include "child_process.h"
#include "covering_fixture.h"
#include "killed_session.h"

namespace {

using State = Texts;

/// A download, and the files after each step that changes them.
struct Covering {
  const char* name;
  const wchar_t* download;
  bool has_older_backup;  ///< of the component's name
  std::vector<State> states;
};

class KilledHost : public CoveringFixture, public testing::WithParamInterface<Covering> {
 protected:
  KilledHost() {
    cad_host::ModelFile assembly;
    assembly.components = {{.name = L"A-1", .path = At(L"prj\\A.sldprt"), .position = {}}};
    m_top = MakeModel(L"Top.sldasm", assembly);
  }

  /// Covers in another process, which is killed at the step. @return whether it was killed.
  bool CoverAndDieAt(int step) {
    for (const wchar_t* left : {L"dl\\temp\\A.sldprt", L"prj\\A.sldprt", L"prj\\B.sldprt"}) {
      DeleteFileW(At(left).c_str());
    }
    RemoveDirectoryW(At(L"dl\\temp").c_str());
    if (GetParam().has_older_backup) Put(L"dl\\temp\\A.sldprt", L"older");
    Put(L"prj\\A.sldprt", L"old");
    Put(GetParam().download, L"new");
    const ChildProcess session({kCoverAndDie, m_top, At(GetParam().download), std::to_wstring(step)});
    const DWORD code = session.Wait();
    EXPECT_TRUE(code == kKilled || code == 0) << code;
    return code == kKilled;
  }

  std::wstring m_top;
};

TEST_P(KilledHost, LeavesTheOldOrTheNewContentComplete) {
  const std::vector<State>& states = GetParam().states;
  std::set<State> seen;
  auto last = states.begin();
  bool killed = true;
  for (int step = 1; killed; ++step) {
    killed = CoverAndDieAt(step);
    const auto state = std::find(last, states.end(), Files());
    ASSERT_NE(state, states.end()) << "killed at step " << step << ": " << testing::PrintToString(Files());
    if (killed) seen.insert(*state);
    last = state;
  }
  EXPECT_EQ(*last, states.back());
  EXPECT_EQ(seen.size(), states.size()) << "not killed in every state between two steps";
}

INSTANTIATE_TEST_SUITE_P(
    , KilledHost,
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

}  // namespace
