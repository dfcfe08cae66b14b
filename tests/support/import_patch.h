/// @file The system functions that a loaded module imports, and replacing one of them.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
#include <string_view>

/// Calls `visit` for each function that `module` imports by name, with the name of the library, the name of
/// the function and the place of its address.
template <class Visit>
void ForEachImport(HMODULE module, Visit&& visit) {
  auto* const base = reinterpret_cast<char*>(module);
  const auto* headers =
      reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (const auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
       library->FirstThunk; ++library) {
    const auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
    auto* entry = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
    for (; name->u1.AddressOfData; ++name, ++entry) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* const function = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
      visit(std::string_view(base + library->Name), std::string_view(function->Name), &entry->u1.Function);
    }
  }
}

/// For the life of the object, a module that imports a function by name calls a replacement instead. Other
/// modules still call the function itself.
class ImportPatch {
 public:
  /// @param module a loaded module that imports `function` by name.
  /// @param replacement has the same type as the function.
  /// @throws std::runtime_error with the name of the function if the module does not import it.
  template <class Function>
  ImportPatch(HMODULE module, std::string_view function, Function* replacement)
      : m_entry(Find(module, function)), m_original(*m_entry) {
    Put(reinterpret_cast<ULONGLONG>(replacement));
  }
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;
  ~ImportPatch() { Put(m_original); }

  /// The address that `module` calls for `function` now.
  /// @throws std::runtime_error like the constructor.
  static ULONGLONG AddressOf(HMODULE module, std::string_view function) { return *Find(module, function); }

 private:
  static ULONGLONG* Find(HMODULE module, std::string_view function) {
    ULONGLONG* found = nullptr;
    ForEachImport(module, [&](std::string_view, std::string_view name, ULONGLONG* entry) {
      if (!found && name == function) found = entry;
    });
    if (!found) throw std::runtime_error("not imported: " + std::string(function));
    return found;
  }

  void Put(ULONGLONG function) const {
    DWORD protection = 0;
    VirtualProtect(m_entry, sizeof *m_entry, PAGE_READWRITE, &protection);
    *m_entry = function;
    VirtualProtect(m_entry, sizeof *m_entry, protection, &protection);
  }

  ULONGLONG* m_entry;
  ULONGLONG m_original;
};
