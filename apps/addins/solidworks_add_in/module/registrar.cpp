#include "registrar.h"

#include <string>

#include "base/unique_registry_key.h"
#include "com_boundary.h"
#include "log/platform_log.h"
#include "log_set_up.h"
#include "module/registration_scripts.h"
#include "registry_script/registry_script.h"

namespace {

using registry_script::Key;
using registry_script::Removal;
using registry_script::Value;

HKEY HandleOf(registry_script::RootKey root) {
  return root == registry_script::RootKey::kClassesRoot ? HKEY_CLASSES_ROOT : HKEY_LOCAL_MACHINE;
}

/// A function, because the macro evaluates its argument several times: never pass it a call.
HRESULT ResultOf(LSTATUS status) { return HRESULT_FROM_WIN32(status); }

HRESULT IgnoreMissing(LSTATUS status) { return status == ERROR_FILE_NOT_FOUND ? S_OK : ResultOf(status); }

void KeepFirstFailure(HRESULT& first, HRESULT result) {
  if (SUCCEEDED(first) && FAILED(result)) first = result;
}

HRESULT WriteValue(HKEY key, const Value& value) {
  if (const auto* const number = std::get_if<std::uint32_t>(&value.data)) {
    return ResultOf(RegSetValueExW(key, value.name.c_str(), 0, REG_DWORD,
                                   reinterpret_cast<const BYTE*>(number), sizeof *number));
  }
  const auto& text = std::get<std::wstring>(value.data);
  const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  return ResultOf(
      RegSetValueExW(key, value.name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), size));
}

HRESULT WriteKey(HKEY parent, const Key& key) {
  HRESULT result = S_OK;
  if (key.removal == Removal::kWithContents) result = IgnoreMissing(RegDeleteTreeW(parent, key.name.c_str()));
  if (FAILED(result)) return result;
  HKEY created = nullptr;
  result = ResultOf(RegCreateKeyExW(parent, key.name.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr,
                                    &created, nullptr));
  const UniqueRegistryKey written(created);
  for (const Value& value : key.values) {
    if (SUCCEEDED(result)) result = WriteValue(written.get(), value);
  }
  for (const Key& child : key.keys) {
    if (SUCCEEDED(result)) result = WriteKey(written.get(), child);
  }
  return result;
}

bool HasSubkeys(HKEY key) {
  DWORD count = 0;
  return RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr,
                          nullptr, nullptr) == ERROR_SUCCESS &&
         count > 0;
}

HRESULT RemoveKey(HKEY parent, const Key& key) {
  if (key.removal == Removal::kWithContents) return IgnoreMissing(RegDeleteTreeW(parent, key.name.c_str()));
  HKEY found = nullptr;
  const LSTATUS status = RegOpenKeyExW(parent, key.name.c_str(), 0, KEY_READ | KEY_WRITE, &found);
  if (status != ERROR_SUCCESS) return IgnoreMissing(status);
  const UniqueRegistryKey opened(found);
  HRESULT first = S_OK;
  for (const Value& value : key.values) {
    KeepFirstFailure(first, IgnoreMissing(RegDeleteValueW(opened.get(), value.name.c_str())));
  }
  for (const Key& child : key.keys) KeepFirstFailure(first, RemoveKey(opened.get(), child));
  if (key.removal != Removal::kNever && !HasSubkeys(opened.get())) {
    KeepFirstFailure(first, IgnoreMissing(RegDeleteKeyW(parent, key.name.c_str())));
  }
  return first;
}

std::vector<registry_script::Root> ReadScript(const CreatableClass& registered) {
  const CSolidWorksAddInModule& module = CSolidWorksAddInModule::Instance();
  return ReadRegistrationScript(module.ModuleHandle(), module.Path(), registered.registration_script,
                                registered.id);
}

/// Calls `apply(root, key)` for every top-level key of the class's script; turns exceptions into results.
template <class Apply>
HRESULT ForEachKey(const CreatableClass& registered, Apply apply) noexcept {
  return EndExceptions(L"reading a registration script", [&] {
    try {
      for (const registry_script::Root& root : ReadScript(registered)) {
        for (const Key& key : root.keys) apply(HandleOf(root.root), key);
      }
      return S_OK;
    } catch (const registry_script::Error& error) {
      InitialiseLog();
      LogPlatformError(L"registration script " + std::to_wstring(registered.registration_script) + L", " +
                       error.Message());
      return E_FAIL;
    }
  });
}

}  // namespace

HRESULT registrar::Register(const CreatableClass& registered) noexcept {
  HRESULT first = S_OK;
  const HRESULT read = ForEachKey(registered, [&first](HKEY root, const Key& key) {
    if (SUCCEEDED(first)) first = WriteKey(root, key);
  });
  return FAILED(read) ? read : first;
}

HRESULT registrar::Unregister(const CreatableClass& registered) noexcept {
  HRESULT first = S_OK;
  const HRESULT read = ForEachKey(
      registered, [&first](HKEY root, const Key& key) { KeepFirstFailure(first, RemoveKey(root, key)); });
  return FAILED(read) ? read : first;
}
