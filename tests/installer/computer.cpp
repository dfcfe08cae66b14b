#include "computer.h"

#include <msi.h>

#include <iterator>
#include <utility>

#include "base/unique_handle.h"
#include "base/unique_registry_key.h"
#include "base/utf8.h"
#include "list_difference.h"
#include "program_folder.h"

namespace computer {

namespace {

constexpr DWORD kLongestRun = 60'000;  // ms
const std::wstring kServices = L"HKLM\\System\\CurrentControlSet\\Services";
const std::wstring kSessionManager = L"HKLM\\System\\CurrentControlSet\\Control\\Session Manager";
const std::wstring kNetworkCards = L"HKLM\\Software\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards";
const std::wstring kPrograms = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

UniqueRegistryKey OpenMachineKey(const std::wstring& path) {
  HKEY key = nullptr;
  RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ | KEY_WOW64_64KEY, &key);
  return UniqueRegistryKey(key);
}

/// The folder for temporary files, with a separator at its end.
std::wstring TemporaryFolder() {
  wchar_t path[MAX_PATH + 1] = {};
  GetTempPathW(static_cast<DWORD>(std::size(path)), path);
  return path;
}

/// What is there before the first test.
const Snapshot& BareComputer() {
  static const Snapshot bare = Look();
  return bare;
}

}  // namespace

std::wstring ThisPackage() { return InBuild(L"installer\\this.msi"); }
std::wstring NextPackage() { return InBuild(L"installer\\next.msi"); }

std::wstring BuiltFile(std::wstring_view name) { return InBuild(L"bin\\" + std::wstring(name)); }

DWORD RunAndWait(const std::wstring& command) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  std::wstring line = command;
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
    return static_cast<DWORD>(-1);
  }
  const UniqueHandle owner = OwnHandle(process.hProcess), thread = OwnHandle(process.hThread);
  if (WaitForSingleObject(process.hProcess, kLongestRun) != WAIT_OBJECT_0) {
    TerminateProcess(process.hProcess, 1);
    return static_cast<DWORD>(-1);
  }
  DWORD code = 0;
  GetExitCodeProcess(process.hProcess, &code);
  return code;
}

DWORD Msiexec(const std::wstring& arguments) { return RunAndWait(L"msiexec " + arguments + L" /qn"); }

DWORD Repair(const std::wstring& properties) {
  return Msiexec(L"/i " + Products().at(0).code + L" REINSTALL=ALL REINSTALLMODE=amus " + properties);
}

unsigned InstallHere(const std::wstring& package, const std::wstring& properties) {
  const INSTALLUILEVEL before = MsiSetInternalUI(INSTALLUILEVEL_BASIC, nullptr);
  const unsigned result = MsiInstallProductW(package.c_str(), properties.c_str());
  MsiSetInternalUI(before, nullptr);
  return result;
}

std::vector<Product> Products() {
  std::vector<Product> products;
  const UniqueRegistryKey key = OpenMachineKey(kPrograms);
  wchar_t name[256];
  for (DWORD index = 0;; ++index) {
    DWORD length = static_cast<DWORD>(std::size(name));
    if (RegEnumKeyExW(key.get(), index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
      break;
    const std::wstring path = kPrograms + L"\\" + name;
    Product product{name, MachineValue(path, L"DisplayName"), MachineValue(path, L"DisplayVersion"),
                    MachineValue(path, L"Publisher")};
    if (product.publisher == L"TAVO") products.push_back(std::move(product));
  }
  return products;
}

std::wstring MachineValue(const std::wstring& key, const std::wstring& name) {
  const UniqueRegistryKey opened = OpenMachineKey(key);
  wchar_t data[1024] = {};
  DWORD size = sizeof data - sizeof(wchar_t), type = 0;
  if (!opened || RegQueryValueExW(opened.get(), name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(data),
                                  &size) != ERROR_SUCCESS) {
    return {};
  }
  return type == REG_DWORD ? std::to_wstring(*reinterpret_cast<const DWORD*>(data)) : std::wstring(data);
}

std::wstring FileVersion(const std::wstring& path) {
  std::vector<BYTE> data(GetFileVersionInfoSizeW(path.c_str(), nullptr));
  VS_FIXEDFILEINFO* information = nullptr;
  UINT size = 0;
  if (data.empty() || !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) ||
      !VerQueryValueW(data.data(), L"\\", reinterpret_cast<void**>(&information), &size)) {
    return {};
  }
  const DWORD high = information->dwFileVersionMS, low = information->dwFileVersionLS;
  return std::to_wstring(HIWORD(high)) + L"." + std::to_wstring(LOWORD(high)) + L"." +
         std::to_wstring(HIWORD(low)) + L"." + std::to_wstring(LOWORD(low));
}

Snapshot Look() {
  return TakeSnapshot({{L"C:"},
                       {L"HKLM\\Software", kServices, kSessionManager, L"HKCU"},
                       {TemporaryFolder(), kNetworkCards}});
}

std::vector<std::wstring> InstallersOwn() {
  return {L"C:\\windows\\Installer", L"HKLM\\Software\\Classes\\Installer",
          L"HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Installer", L"HKLM\\" + kPrograms};
}

InstallerTest::InstallerTest() { BareComputer(); }

void InstallerTest::TearDown() {
  for (const Product& product : Products()) EXPECT_EQ(Msiexec(L"/x " + product.code), 0u);
  EXPECT_PRED_FORMAT2(SameEntries, Changes(BareComputer(), Look()), std::vector<std::wstring>{})
      << "this stays on the computer";
}

std::vector<std::wstring> InstallerTest::ChangesSoFar() const {
  return ChangesNotBelow(Changes(BareComputer(), Look()), InstallersOwn());
}

}  // namespace computer
