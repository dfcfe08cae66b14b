// Connecting, from CoCreateInstance to the end of ConnectToSW with fourteen items, beside an empty COM DLL of
// the same compiler and the same calls of the host and the same files. `--once ours|bare` measures the first
// time in a process; the parent runs it.
#include <benchmark/benchmark.h>

#include <windows.h>

#include <comdef.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

#include "base/module_path.h"
#include "bench_home.h"
#include "cad_host/host.h"
#include "module/add_in_dll.h"
#include "peers/same_calls.h"
#include "solidworks_add_in_h.h"
#include "temp_folder.h"

namespace {

constexpr CLSID kEmptyClass = {0x3B4C1F52, 0x7D0A, 0x4E5E, {0x9A, 0x41, 0x5A, 0x0C, 0x6E, 0x2D, 0x11, 0x90}};
constexpr wchar_t kEmptyKey[] = L"Software\\Classes\\CLSID\\{3B4C1F52-7D0A-4E5E-9A41-5A0C6E2D1190}";

std::wstring BesideThis(const wchar_t* name) {
  std::wstring path = ModulePath(nullptr);
  path.resize(path.find_last_of(L'\\') + 1);
  return path + name;
}

void RegisterEmptyDll() {
  const std::wstring path = BesideThis(L"empty_com_dll.dll");
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, (std::wstring(kEmptyKey) + L"\\InprocServer32").c_str(), nullptr,
                  REG_SZ, path.c_str(), static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
  constexpr wchar_t kModel[] = L"Apartment";  // as the add-in's
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, (std::wstring(kEmptyKey) + L"\\InprocServer32").c_str(),
                  L"ThreadingModel", REG_SZ, kModel, sizeof kModel);
}

ISwAddinPtr Create(REFCLSID id) {
  ISwAddinPtr add_in;
  const HRESULT result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&add_in));
  if (FAILED(result)) {
    char text[64];
    std::snprintf(text, sizeof text, "the object cannot be created: 0x%08lx", result);
    throw std::runtime_error(text);
  }
  return add_in;
}

/// Makes the calls in the add-in's stead.
class BareAddIn : public ISwAddin {
 public:
  BareAddIn(const std::wstring& view, const TempFolder& folder) : m_view(view), m_folder(folder) {}
  virtual ~BareAddIn() = default;
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const bool known = iid == IID_IUnknown || iid == __uuidof(ISwAddin);
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP ConnectToSW(IDispatch* host, long cookie, VARIANT_BOOL* connected) override {
    m_calls.Make(host, cookie, m_view, m_folder);
    *connected = VARIANT_TRUE;
    return S_OK;
  }
  STDMETHODIMP DisconnectFromSW(VARIANT_BOOL* done) override {
    m_calls.Undo();
    *done = VARIANT_TRUE;
    return S_OK;
  }

 private:
  const std::wstring& m_view;
  const TempFolder& m_folder;
  SameCalls m_calls;
};

/// The host, its files, and one connection after the other.
class Session {
 public:
  Session() {
    m_home.Configure(L"View.json", ReadFileBytes(BesideThis(L"..\\bin\\config\\View.json")));
    m_view = m_home.Folder().Path(L"config\\New TAVO SolidWorks AddOn\\View.json");
  }

  void ConnectOurs() { m_addIn = &m_host.Connect(Create(CLSID_SwAddin), L"ours"); }

  void ConnectBare() {
    m_empty = Create(kEmptyClass);
    m_addIn = &m_host.Connect(&m_bare, L"bare");
  }

  void Disconnect() {
    m_host.Disconnect(*m_addIn);
    m_empty = nullptr;
    m_host.GetJournal().Clear();
  }

  std::vector<cad_host::JournalEntry> Calls() { return m_host.GetJournal().Calls(); }

 private:
  BenchHome m_home;
  std::wstring m_view;
  BareAddIn m_bare{m_view, m_home.Folder()};
  cad_host::Host m_host;
  cad_host::AddIn* m_addIn = nullptr;
  ISwAddinPtr m_empty;
};

using Step = void (Session::*)();

void Warm(benchmark::State& state, Step connect) {
  Session session;
  (session.*connect)();  // the first time is another row
  session.Disconnect();
  for (auto _ : state) {
    (session.*connect)();
    state.PauseTiming();
    session.Disconnect();
    state.ResumeTiming();
  }
}

/// Measures the first connection of a new process, which prints its nanoseconds.
void Cold(benchmark::State& state, const wchar_t* which) {
  const std::wstring command = L"\"" + ModulePath(nullptr) + L"\" --once " + which;
  for (auto _ : state) {
    FILE* const output = _wpopen(command.c_str(), L"r");
    long long nanoseconds = 0;
    if (!output || std::fscanf(output, "%lld", &nanoseconds) != 1)
      return state.SkipWithError("no measurement");
    _pclose(output);
    state.SetIterationTime(static_cast<double>(nanoseconds) * 1e-9);
  }
}

int Once(const std::string& which) {
  Session session;
  const auto start = std::chrono::steady_clock::now();
  which == "ours" ? session.ConnectOurs() : session.ConnectBare();
  const auto end = std::chrono::steady_clock::now();
  std::printf("%lld\n", static_cast<long long>(std::chrono::nanoseconds(end - start).count()));
  session.Disconnect();
  return 0;
}

std::vector<cad_host::JournalEntry> CallsOf(Step connect) {
  Session session;
  (session.*connect)();
  auto calls = session.Calls();
  session.Disconnect();
  return calls;
}

/// The peer must make the same calls as the add-in, in the same order.
void CompareCalls() {
  const auto ours = CallsOf(&Session::ConnectOurs);
  const auto bare = CallsOf(&Session::ConnectBare);
  for (std::size_t index = 0; index < std::max(ours.size(), bare.size()); ++index) {
    if (index < ours.size() && index < bare.size() && ours[index].method == bare[index].method) continue;
    throw std::logic_error("call " + std::to_string(index) + " of the peer differs from the add-in's");
  }
}

}  // namespace

int main(int argc, char** argv) {
  const ComApartment com;
  const AddInDll dll;
  dll.RegisterServer();
  RegisterEmptyDll();
  if (argc == 3 && std::string(argv[1]) == "--once") return Once(argv[2]);
  CompareCalls();
  const auto warm = [](const char* name, Step connect) {
    benchmark::RegisterBenchmark(name, [=](auto& state) { Warm(state, connect); })->UseRealTime();
  };
  warm("connect/warm/ours", &Session::ConnectOurs);
  warm("connect/warm/bare", &Session::ConnectBare);
  const auto cold = [](const char* name, const wchar_t* which) {
    benchmark::RegisterBenchmark(name, [=](auto& state) { Cold(state, which); })
        ->UseManualTime()
        ->Iterations(1);
  };
  cold("connect/cold/ours", L"ours");
  cold("connect/cold/bare", L"bare");
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  dll.UnregisterServer();
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, kEmptyKey);
}
