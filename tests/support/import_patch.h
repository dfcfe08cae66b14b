/// @file Replacing a system function that a loaded module calls.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
#include <string_view>

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

  /// The address of the function itself.
  ULONGLONG Original() const { return m_original; }

 private:
  template <class T>
  static T* At(HMODULE module, ULONGLONG offset) {
    return reinterpret_cast<T*>(reinterpret_cast<char*>(module) + offset);
  }

  static ULONGLONG* Find(HMODULE module, std::string_view function) {
    const auto* headers =
        At<IMAGE_NT_HEADERS>(module, static_cast<ULONGLONG>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress);
         library->FirstThunk; ++library) {
      const auto* name = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
      auto* entry = At<IMAGE_THUNK_DATA>(module, library->FirstThunk);
      for (; name->u1.AddressOfData; ++name, ++entry) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
        if (function == At<IMAGE_IMPORT_BY_NAME>(module, name->u1.AddressOfData)->Name) {
          return &entry->u1.Function;
        }
      }
    }
    throw std::runtime_error("not imported: " + std::string(function));
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
