// The entries of the classes in the registry.
#include <windows.h>

#include <comdef.h>

#include <optional>

#include "checks.h"
#include "registry.h"

namespace doctor {
namespace {

using registry_script::Key;
using registry_script::RootKey;
using registry_script::Value;

constexpr wchar_t kMachineClasses[] = L"SOFTWARE\\Classes\\";

std::string Id(const RegisteredClass& registered) { return std::string("registration.") + registered.name; }

std::wstring ClassKey(const RegisteredClass& registered) {
  return kMachineClasses + (L"CLSID\\" + GuidText(registered.id));
}

std::wstring ToRegister(const Patient& patient) {
  return L"Run as an administrator: %SystemRoot%\\System32\\regsvr32.exe \"" +
         (patient.add_in.Path().empty() ? L"...\\solidworks_add_in.dll" : patient.add_in.Path()) + L"\"";
}

std::wstring Quoted(const std::wstring& text) { return L"\"" + text + L"\""; }

/// What is there in place of `value`; nothing if it is as it must be.
std::optional<std::wstring> FindDifference(const RegistryKey& key, const Value& value) {
  if (const auto* const text = std::get_if<std::wstring>(&value.data)) {
    const std::optional<std::wstring> found = key.Text(value.name);
    if (found == *text) return std::nullopt;
    return (found ? L"is " + Quoted(*found) : std::wstring(L"is missing")) + L"; it must be " + Quoted(*text);
  }
  const std::uint32_t number = std::get<std::uint32_t>(value.data);
  const std::optional<std::uint32_t> found = key.Number(value.name);
  if (found == number) return std::nullopt;
  return (found ? L"is " + std::to_wstring(*found) : std::wstring(L"is missing")) + L"; it must be " +
         std::to_wstring(number);
}

std::wstring DifferenceText(const std::wstring& path, const Value& value, const std::wstring& difference) {
  const std::wstring name = value.name.empty() ? L"the default value" : L"the value " + Quoted(value.name);
  return name + L" of HKLM\\" + path + L" " + difference;
}

/// Adds a text for each value of `expected` that differs below the machine's `path`.
void CollectDifferences(const std::wstring& path, const Key& expected,
                        std::vector<std::wstring>& differences) {
  const std::wstring own_path = path + expected.name;
  const RegistryKey key(HKEY_LOCAL_MACHINE, own_path);
  if (!key.Exists()) {
    differences.push_back(L"the key HKLM\\" + own_path + L" is missing");
    return;
  }
  for (const Value& value : expected.values) {
    const std::optional<std::wstring> difference = FindDifference(key, value);
    if (difference) differences.push_back(DifferenceText(own_path, value, *difference));
  }
  for (const Key& child : expected.keys) CollectDifferences(own_path + L"\\", child, differences);
}

/// What differs from the class's own entries below HKCR.
std::vector<std::wstring> FindDifferences(const AddInLibrary& library, const RegisteredClass& registered) {
  std::vector<std::wstring> differences;
  for (const registry_script::Root& root : library.Script(registered)) {
    if (root.root != RootKey::kClassesRoot) continue;
    for (const Key& key : root.keys) CollectDifferences(kMachineClasses, key, differences);
  }
  return differences;
}

void CheckEntries(const Patient& patient, const RegisteredClass& registered, Report& report) {
  try {
    const std::vector<std::wstring> differences = FindDifferences(patient.add_in, registered);
    for (const std::wstring& difference : differences) {
      report.Fail(Id(registered), registered.title + (L" is registered wrongly: " + difference) + L".",
                  ToRegister(patient));
    }
    if (differences.empty()) {
      report.Ok(
          Id(registered),
          registered.title + std::wstring(L" is registered for the machine, as the library registers it."));
    }
  } catch (const registry_script::Error& error) {
    report.Fail(Id(registered), L"The library's registration script is damaged: " + error.Message(),
                L"Install the add-in again.");
  } catch (const _com_error&) {
    report.Fail(Id(registered),
                registered.title + (L" is registered, but " + patient.add_in.Path()) +
                    L" cannot be read, or is not the add-in's library.",
                L"Install the add-in again, and register it.");
  }
}

void CheckMachine(const Patient& patient, const RegisteredClass& registered, Report& report) {
  const std::wstring path = ClassKey(registered);
  if (RegistryKey(HKEY_LOCAL_MACHINE, path).Exists()) {
    CheckEntries(patient, registered, report);
  } else if (RegistryKey(HKEY_LOCAL_MACHINE, path, View::k32Bit).Exists()) {
    report.Fail(
        Id(registered),
        registered.title + std::wstring(L" is registered for 32-bit programs only. The CAD application "
                                        L"is a 64-bit program and does not see it."),
        ToRegister(patient));
  } else if (RegistryKey(HKEY_CURRENT_USER, path).Exists()) {
    report.Fail(
        Id(registered),
        registered.title + std::wstring(L" is registered for the current account only, not for the "
                                        L"machine. Other accounts and elevated programs do not see it."),
        ToRegister(patient));
  } else {
    report.Fail(Id(registered), registered.title + std::wstring(L" is not registered."), ToRegister(patient));
  }
}

/// A copy for one user takes the place of the machine's entries, whatever an administrator registers.
void CheckPerUser(const RegisteredClass& registered, Report& report) {
  const std::string id = Id(registered) + "_per_user";
  const std::wstring path = ClassKey(registered);
  if (!RegistryKey(HKEY_CURRENT_USER, path).Exists()) {
    report.Ok(id, registered.title + std::wstring(L" has no copy for the current account."));
    return;
  }
  const std::wstring server =
      RegistryKey(HKEY_CURRENT_USER, path + L"\\InprocServer32").Text(L"").value_or(L"(no library)");
  report.Fail(id,
              registered.title + (L" has a copy for the current account, HKCU\\" + path) +
                  L", which takes the place of the machine's entry: " + server + L" is loaded.",
              L"Delete that key, as the user whose account it is.");
}

}  // namespace

void CheckRegistration(const Patient& patient, Report& report) {
  for (const RegisteredClass& registered : Classes()) {
    CheckMachine(patient, registered, report);
    CheckPerUser(registered, report);
  }
}

}  // namespace doctor
