/// @file The DLL that is looked at.
#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "registry_script/registry_script.h"

namespace doctor {

/// A class that the DLL registers.
struct RegisteredClass {
  const char* name;      ///< in the ids of findings
  const wchar_t* title;  ///< in texts
  const CLSID& id;
  unsigned script;  ///< resource id of its registration script
};

/// The add-in's object first, on which the host's entries depend.
const std::array<RegisteredClass, 2>& Classes();

/// `id` as "{...}".
std::wstring GuidText(REFGUID id);

struct ModuleFreer {
  using pointer = HMODULE;
  void operator()(HMODULE module) const noexcept { FreeLibrary(module); }
};
using UniqueModule = std::unique_ptr<HMODULE, ModuleFreer>;

/// The DLL of the add-in: the one that is registered, or the one beside this program. It is opened for its
/// resources, none of its code runs.
class AddInLibrary {
 public:
  /// @param own_folder  where this program lies, and the DLL if none is registered.
  explicit AddInLibrary(const std::wstring& own_folder);

  /// Empty if none is registered and none lies beside this program.
  const std::wstring& Path() const { return m_path; }
  std::wstring Folder() const { return m_path.substr(0, m_path.find_last_of(L"\\/")); }
  bool IsRegistered() const { return m_isRegistered; }

  /// The DLL beside this program, if there is one and another one is registered; else empty.
  const std::wstring& UnusedCopy() const { return m_unusedCopy; }

  /// Null if the file cannot be opened as a DLL.
  HMODULE Resources() const { return m_module.get(); }

  /// What registering the class writes.
  /// @throws registry_script::Error, _com_error if this is another DLL.
  std::vector<registry_script::Root> Script(const RegisteredClass& registered) const;

 private:
  std::wstring m_path;
  bool m_isRegistered = false;
  std::wstring m_unusedCopy;
  UniqueModule m_module;
};

/// The path of the DLL that is registered for the class; empty if none is.
std::wstring RegisteredPath(const RegisteredClass& registered);

}  // namespace doctor
