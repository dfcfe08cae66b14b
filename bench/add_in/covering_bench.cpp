// Covering a component's file with a download of one gibibyte, beside one copy of it by the system.
#include <benchmark/benchmark.h>

#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "add_in/connected_session.h"
#include "base/utf8.h"
#include "cad_host/model_file.h"
#include "documents/covering/file_calls.h"
#include "module/add_in_dll.h"
#include "unix_process.h"

namespace {

constexpr long long kBytes = 1LL << 30;

/// The path in JSON within quotes within JSON within quotes.
std::string Escaped(const std::wstring& path) {
  std::string escaped;
  for (const char character : utf8::Encode<wchar_t>(path)) {
    escaped += character == '\\' ? R"(\\\\)" : std::string(1, character);
  }
  return escaped;
}

/// A model file of kBytes bytes, without holes.
void WriteLargeModel(const std::wstring& path) {
  cad_host::WriteModelFile(path, {});
  const UniqueHandle file =
      OwnHandle(CreateFileW(path.c_str(), FILE_APPEND_DATA, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  LARGE_INTEGER size{};
  GetFileSizeEx(file.get(), &size);
  const std::string part(1 << 20, 'x');
  for (long long left = kBytes - size.QuadPart; left > 0;) {
    DWORD written = 0;
    const auto next = static_cast<DWORD>(std::min<long long>(left, static_cast<long long>(part.size())));
    if (!WriteFile(file.get(), part.data(), next, &written, nullptr)) {
      throw std::runtime_error("no room for the large file");
    }
    left -= written;
  }
}

/// An assembly with a selected component.
class Covering {
 public:
  Covering()
      : m_download(m_folder.MakeFolder(L"dl") + L"\\A.sldprt"),
        m_component(m_folder.MakeFolder(L"prj") + L"\\A.sldprt"),
        m_session("tavo-bench-covering", R"({\"__InvokeResult__\":true,\"ReplaceFileByCovering\":[\")" +
                                             Escaped(m_download) + R"(\"]})") {
    cad_host::WriteModelFile(m_component, {});
    WriteLargeModel(m_download);
    const std::wstring top = m_folder.Path(L"Top.sldasm");
    cad_host::ModelFile model;
    model.type = swDocASSEMBLY;
    cad_host::WriteModelFile(top, model);
    m_session.Connect();
    m_session.Pick(L"PlmLogin");
    const auto assembly = m_session.Host().Open(top);
    assembly->selection.push_back(
        {.component = m_session.Host().AddComponent(*assembly, m_component), .point = {}});
  }

  void Cover() { m_session.Pick(L"OpenDataSelector"); }

  void Copy() const {
    if (!CopyFileW(m_download.c_str(), m_bare.c_str(), FALSE)) throw std::runtime_error("no bare copy");
  }

  /// Removes what is made by a turn. Both copies then write new files.
  void Clean() {
    DeleteFileW(m_folder.Path(L"dl\\temp\\A.sldprt").c_str());
    DeleteFileW(m_bare.c_str());
    m_session.Host().GetJournal().Clear();
  }

 private:
  TempFolder m_folder;
  std::wstring m_download;
  std::wstring m_component;
  std::wstring m_bare = m_folder.Path(L"prj\\bare copy");
  ConnectedSession m_session;
};

}  // namespace

int main(int argc, char** argv) {
  const ComApartment com;
  const AddInDll dll;
  dll.RegisterServer();
  {
    Covering covering;
    covering.Cover();  // makes the folder of backups; later turns are alike
    covering.Copy();
    covering.Clean();
    benchmark::RegisterBenchmark(
        "covering/1GiB/ours",
        [&covering](benchmark::State& state) {
          const FileCalls calls;
          const long long read = UnixCount("io", "rchar"), written = UnixCount("io", "wchar");
          for (auto _ : state) covering.Cover();
          state.counters["read"] = static_cast<double>(UnixCount("io", "rchar") - read) / kBytes;
          state.counters["written"] = static_cast<double>(UnixCount("io", "wchar") - written) / kBytes;
          state.counters["copies"] = calls.Copies();
          state.counters["other_calls"] = calls.Others();
          covering.Clean();
        })
        ->UseRealTime()
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("covering/1GiB/copy",
                                 [&covering](benchmark::State& state) {
                                   for (auto _ : state) covering.Copy();
                                   covering.Clean();
                                 })
        ->UseRealTime()
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
  }
  dll.UnregisterServer();
}
