#include "killed_session.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "base/unique_handle.h"
#include "failing_calls/call_failures.h"
#include "failing_calls/import_gate.h"
#include "import_patch.h"

namespace {

constexpr std::array kPlaces = {L"before", L"after", L"inside"};

// Global variables, because the functions that run in the place of the system's have no object.
ULONGLONG called_function = 0;
int tenths = 0;

[[noreturn]] void Die() {
  for (;;) TerminateProcess(GetCurrentProcess(), kKilled);
}

/// More arguments than a function has are not looked at by it.
LONG_PTR CallAndDie(LONG_PTR a, LONG_PTR b, LONG_PTR c, LONG_PTR d, LONG_PTR e, LONG_PTR f, LONG_PTR g,
                    LONG_PTR h, LONG_PTR i, LONG_PTR j) {
  using Function = decltype(&CallAndDie);
  reinterpret_cast<Function>(called_function)(a, b, c, d, e, f, g, h, i, j);
  Die();
}

UniqueHandle Open(const wchar_t* path, DWORD access, DWORD disposition) {
  return OwnHandle(
      CreateFileW(path, access, FILE_SHARE_READ, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Makes the target anew as the system's copy does, and writes some of the bytes.
BOOL WINAPI CopySomeAndDie(const wchar_t* from, const wchar_t* to, BOOL) {
  const UniqueHandle source = Open(from, GENERIC_READ, OPEN_EXISTING);
  const UniqueHandle target = Open(to, GENERIC_WRITE, CREATE_ALWAYS);
  std::vector<char> bytes(GetFileSize(source.get(), nullptr));
  DWORD count = 0;
  ReadFile(source.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
  WriteFile(target.get(), bytes.data(), count * static_cast<DWORD>(tenths) / 10, &count, nullptr);
  Die();
}

bool IsOfTheHost(const std::wstring& call) { return call.find(L"::") != std::wstring::npos; }

HMODULE AddInModule() { return GetModuleHandleW(L"solidworks_add_in.dll"); }

/// The address of a function that the module imports.
ULONGLONG FunctionOf(HMODULE module, std::string_view function) {
  ULONGLONG address = 0;
  ForEachImport(module, [&](std::string_view, std::string_view name, const ULONGLONG* entry) {
    if (name == function) address = *entry;
  });
  return address;
}

template <class Function>
const void* Address(Function* function) {
  return reinterpret_cast<const void*>(function);
}

class Session : public CoveringSession {
 public:
  int Run(const std::vector<std::wstring>& arguments) {
    const std::wstring& place = arguments.at(3);
    End end{.call = arguments.at(4), .number = std::stoi(arguments.at(5))};
    while (place != kPlaces.at(static_cast<std::size_t>(end.place))) {
      end.place = static_cast<End::Place>(static_cast<std::size_t>(end.place) + 1);
    }
    ConnectAndLogIn();
    return CoverAndDie(arguments.at(1), arguments.at(2), end) ? 0 : 1;
  }

 private:
  void TestBody() override {}
};

}  // namespace

std::wstring End::Text() const {
  return std::wstring(kPlaces.at(static_cast<std::size_t>(place))) + L" " + call + L", " +
         std::to_wstring(number);
}

bool CoveringSession::CoverFirst(const std::wstring& assembly, const std::wstring& download) {
  m_assembly = m_host->Open(assembly);
  m_component = m_assembly->components.at(0);
  m_assembly->selection = {{.component = m_component, .point = {}}};
  const bool covered = Cover({download}).Succeeded() && m_boxes->Boxes().empty();
  const auto documents = m_host->OpenDocuments();
  for (const auto& document : documents) m_host->Close(document);
  return covered;
}

void CoveringSession::WhenCoveringBegins(std::function<void()> begun) {
  m_host->GetFaults().Before(L"ISldWorks::get_IActiveDoc2", 1, std::move(begun));
}

std::vector<End> CoveringSession::RecordEnds(const std::wstring& assembly, const std::wstring& download) {
  ImportGate gate(AddInModule());
  WhenCoveringBegins([&gate] { gate.Open(); });
  EXPECT_TRUE(CoverFirst(assembly, download));
  gate.Close();
  std::map<std::wstring, int> calls;
  for (const auto& call : m_host->GetJournal().Calls()) ++calls[call.method];
  const auto imported = gate.Functions();
  for (const CallFailure& failure : SystemFailures()) {
    const std::string name = failure.function;
    if (std::ranges::count(imported, name)) calls[{name.begin(), name.end()}] = gate.CallsOf(name);
  }
  std::vector<End> ends;
  for (const auto& [call, count] : calls) {
    for (int number = 1; number <= count; ++number) {
      ends.push_back({End::Place::kBefore, call, number});
      ends.push_back({End::Place::kAfter, call, number});
    }
  }
  return ends;
}

bool CoveringSession::CoverAndDie(const std::wstring& assembly, const std::wstring& download,
                                  const End& end) {
  cad_host::Faults& faults = m_host->GetFaults();
  const std::string function(end.call.begin(), end.call.end());
  if (IsOfTheHost(end.call)) {
    if (end.place == End::Place::kBefore) faults.Before(end.call, end.number, Die);
    if (end.place == End::Place::kAfter) faults.ChangeResults(end.call, end.number, [](auto&) { Die(); });
    return CoverFirst(assembly, download);
  }
  called_function = FunctionOf(AddInModule(), function);
  ImportGate gate(AddInModule());
  WhenCoveringBegins([&] {
    switch (end.place) {
      case End::Place::kBefore:
        return gate.Open(function, end.number, Address(&Die));
      case End::Place::kAfter:
        return gate.Open(function, end.number, Address(&CallAndDie));
      case End::Place::kInside:
        tenths = end.number;
        return gate.Open(function, 1, Address(&CopySomeAndDie));
    }
  });
  return CoverFirst(assembly, download);
}

int RunKilledSession(const std::vector<std::wstring>& arguments) { return Session().Run(arguments); }

std::vector<std::wstring> KillArguments(const std::wstring& assembly, const std::wstring& download,
                                        const End& end) {
  return {kCoverAndDie, assembly,
          download,     kPlaces.at(static_cast<std::size_t>(end.place)),
          end.call,     std::to_wstring(end.number)};
}
