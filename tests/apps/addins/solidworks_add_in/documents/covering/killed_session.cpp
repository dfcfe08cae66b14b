#include "killed_session.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shlwapi.h>

#include "covering_fixture.h"
#include "import_patch.h"

namespace {

// A global variable, because the functions that replace the system's functions have no object.
int steps_to_live = 0;

void TakeStep() {
  if (--steps_to_live == 0) TerminateProcess(GetCurrentProcess(), kKilled);
}

/// Takes a step before it calls the system's function.
template <auto Function>
struct Stepping;

template <class Result, class... Arguments, Result (*Function)(Arguments...)>
struct Stepping<Function> {
  static Result Call(Arguments... arguments) {
    TakeStep();
    return Function(arguments...);
  }
};

class KilledSession : public CoveringFixture {
 public:
  int Run(const std::wstring& assembly, const std::wstring& download, int step) {
    ConnectAndLogIn();
    m_assembly = m_host->Open(assembly);
    m_component = m_assembly->components.at(0);
    m_assembly->selection.push_back({.component = m_component, .point = {}});

    const HMODULE dll = GetModuleHandleW(L"solidworks_add_in.dll");
    const ImportPatch folder_check(dll, "PathIsDirectoryW", Stepping<PathIsDirectoryW>::Call);
    const ImportPatch folder(dll, "CreateDirectoryW", Stepping<CreateDirectoryW>::Call);
    const ImportPatch attributes(dll, "GetFileAttributesW", Stepping<GetFileAttributesW>::Call);
    const ImportPatch move(dll, "MoveFileExW", Stepping<MoveFileExW>::Call);
    const ImportPatch copy(dll, "CopyFileW", Stepping<CopyFileW>::Call);
    m_host->GetFaults().Before(L"", cad_host::Faults::kEvery, TakeStep);
    m_host->GetFaults().Before(L"IComponent2::GetPathName", 1, [step] { steps_to_live = step; });
    const bool covered = Cover({download}).Succeeded() && m_boxes->Boxes().empty();
    steps_to_live = 0;
    return covered ? 0 : 1;
  }

 private:
  void TestBody() override {}
};

}  // namespace

int CoverAndDie(const std::wstring& assembly, const std::wstring& download, int step) {
  return KilledSession().Run(assembly, download, step);
}
