/// @file The host's type library in the registry, where event sinks look for it.
#pragma once

#include <memory>
#include <string>

#include "files/file_hold.h"

namespace cad_host {

/// Registers the host's type library for the life of the object, where none is registered whose file is
/// there. The library's file lies in the temporary folder meanwhile.
class TypeLibraryRegistration {
 public:
  /// @param major the version under which event sinks look for it: the host's major version.
  /// @throws HostError where it cannot be written or registered.
  explicit TypeLibraryRegistration(WORD major);
  TypeLibraryRegistration(const TypeLibraryRegistration&) = delete;
  TypeLibraryRegistration& operator=(const TypeLibraryRegistration&) = delete;
  ~TypeLibraryRegistration();

 private:
  WORD m_major;
  std::wstring m_path;  // empty: registered by somebody else
  std::unique_ptr<FileHold> m_hold;
};

}  // namespace cad_host
