/// @file The host's type library in the registry, where event sinks look for it.
#pragma once

#include <memory>
#include <string>

#include "files/file_hold.h"

namespace cad_host {

/// Registers the host's type library during the lifetime of the object, unless one is registered already and
/// its file exists. The file of the library is in the temporary folder during that time.
class TypeLibraryRegistration {
 public:
  /// @param major the version under which event sinks look for it: the host's major version.
  /// @throws HostError if it cannot be written or registered.
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
