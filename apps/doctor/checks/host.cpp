// The CAD application's entries for the add-in.
#include <windows.h>

#include <comdef.h>

#include <algorithm>

#include "CStringHelper.h"
#include "checks.h"
#include "registry.h"

namespace doctor {
namespace {

constexpr wchar_t kHostKey[] = L"SOFTWARE\\SolidWorks";
constexpr wchar_t kAddIns[] = L"SOFTWARE\\SolidWorks\\AddIns\\";
constexpr wchar_t kStartUp[] = L"Software\\SolidWorks\\AddInsStartup\\";
constexpr wchar_t kRegister[] = L"Register the library again, as an administrator.";

/// The oldest release with every method that the add-in needs.
constexpr int kOldestRelease = 2018;

/// The texts that registering writes below the host's key `path`, by the names of their values.
std::vector<registry_script::Value> ExpectedTexts(const AddInLibrary& library) {
  std::vector<registry_script::Value> texts;
  const auto collect = [&texts](const auto& self, const registry_script::Key& key) -> void {
    for (const registry_script::Value& value : key.values) {
      if (std::holds_alternative<std::wstring>(value.data)) texts.push_back(value);
    }
    for (const registry_script::Key& child : key.keys) self(self, child);
  };
  for (const registry_script::Root& root : library.Script(Classes().front())) {
    if (root.root != registry_script::RootKey::kLocalMachine) continue;
    for (const registry_script::Key& key : root.keys) collect(collect, key);
  }
  return texts;
}

std::wstring DifferenceText(const std::wstring& path, const std::wstring& name,
                            const std::optional<std::wstring>& found, const std::wstring& expected) {
  return L"The value \"" + name + L"\" of HKLM\\" + path +
         (found ? L" is \"" + *found + L"\"" : std::wstring(L" is missing")) + L"; it must be \"" + expected +
         L"\".";
}

void CheckTexts(const RegistryKey& key, const std::wstring& path, const AddInLibrary& library,
                Report& report) {
  bool is_right = true;
  for (const registry_script::Value& expected : ExpectedTexts(library)) {
    const std::wstring& text = std::get<std::wstring>(expected.data);
    const std::optional<std::wstring> found = key.Text(expected.name);
    if (found == text) continue;
    is_right = false;
    report.Fail("host.key", DifferenceText(path, expected.name, found, text), kRegister);
  }
  if (is_right)
    report.Ok("host.key", L"The CAD application's list of add-ins has the add-in: HKLM\\" + path + L".");
}

void CheckKey(const Patient& patient, const std::wstring& path, Report& report) {
  const RegistryKey key(HKEY_LOCAL_MACHINE, path);
  if (!key.Exists()) {
    const bool is_in_other_half = RegistryKey(HKEY_LOCAL_MACHINE, path, View::k32Bit).Exists();
    report.Fail("host.key",
                L"The CAD application's list of add-ins does not have the add-in: HKLM\\" + path +
                    (is_in_other_half ? L" exists for 32-bit programs only." : L" is missing."),
                kRegister);
    return;
  }
  try {
    CheckTexts(key, path, patient.add_in, report);
  } catch (const registry_script::Error& error) {
    report.Fail("host.key", L"The library's registration script is damaged: " + error.Message(), kRegister);
  } catch (const _com_error&) {  // the registered library is missing or another one, which is told elsewhere
    report.PassOver("host.key", L"HKLM\\" + path +
                                    L" exists; the library that says what it must contain cannot be read.");
  }
}

/// Whether the add-in loads at the host's next start, and why.
void CheckStartUp(const std::wstring& clsid, Report& report) {
  const std::optional<std::uint32_t> of_account =
      RegistryKey(HKEY_CURRENT_USER, kStartUp + clsid).Number(L"");
  const std::optional<std::uint32_t> of_machine =
      RegistryKey(HKEY_LOCAL_MACHINE, kAddIns + clsid).Number(L"");
  const bool loads = of_account.value_or(of_machine.value_or(0)) != 0;
  const std::wstring why = of_account
                               ? L"the choice of this account, HKCU\\" + (kStartUp + clsid)
                               : std::wstring(L"the machine's default, as this account has made no choice");
  const std::wstring text = std::wstring(L"When the CAD application starts, it ") +
                            (loads ? L"loads" : L"does not load") + L" the add-in: this is " + why + L".";
  const std::wstring advice =
      L"Switch the add-in on in the CAD application's list of add-ins, also in the column for its start.";
  if (of_account == 0u) {
    report.Warn("host.start_up", text, advice);
  } else {
    report.Ok("host.start_up", loads ? text : text + L" " + advice);
  }
  report.Conclude(text);
}

/// The releases that are installed, as years.
std::vector<int> InstalledReleases() {
  constexpr std::wstring_view kPrefix = L"solidworks ";
  std::vector<int> years;
  for (const std::wstring& name : RegistryKey(HKEY_LOCAL_MACHINE, kHostKey).Subkeys()) {
    const std::wstring lower = CStringHelper::ToLower(name);
    if (!lower.starts_with(kPrefix)) continue;
    const std::wstring year = lower.substr(kPrefix.size());
    const bool is_year =
        year.size() == 4 && std::ranges::all_of(year, [](wchar_t c) { return c >= L'0' && c <= L'9'; });
    if (is_year) years.push_back(std::stoi(year));
  }
  std::ranges::sort(years);
  return years;
}

void CheckRelease(Report& report) {
  const std::vector<int> years = InstalledReleases();
  if (years.empty()) {
    report.PassOver("host.release", L"The release of the CAD application is not known: HKLM\\" +
                                        std::wstring(kHostKey) + L" has no key for one.");
    return;
  }
  std::wstring list;
  for (const int year : years) list += (list.empty() ? L"" : L", ") + std::to_wstring(year);
  const std::wstring text = L"Releases of the CAD application on this machine: " + list;
  const std::wstring oldest = L"Use release " + std::to_wstring(kOldestRelease) + L" or later.";
  if (years.back() < kOldestRelease) {
    report.Fail("host.release", text + L". That is too old: components cannot be replaced.", oldest);
  } else if (years.front() < kOldestRelease) {
    report.Warn("host.release", text + L". In the oldest one components cannot be replaced.", oldest);
  } else {
    report.Ok("host.release", text + L".");
  }
}

}  // namespace

void CheckHost(const Patient& patient, Report& report) {
  const std::wstring clsid = GuidText(Classes().front().id);
  CheckKey(patient, kAddIns + clsid, report);
  CheckStartUp(clsid, report);
  CheckRelease(report);
}

}  // namespace doctor
