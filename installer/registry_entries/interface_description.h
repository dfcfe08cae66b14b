/// @file What registration needs to know from an interface description.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace registry_entries {

/// Ids are in braces and upper case, as the registry has them.
struct Interface {
  std::wstring name;
  std::wstring id;
};

struct TypeLibrary {
  std::wstring name;  ///< its help text, under which it is registered
  std::wstring id;
  std::wstring version;  ///< such as "1.0"
};

struct InterfaceDescription {
  std::wstring application_id;
  TypeLibrary type_library;
  std::vector<Interface> interfaces;             ///< those for automation, in the order of the file
  std::map<std::wstring, std::wstring> classes;  ///< ids by name
};

/// Reads the text of an .idl file with one library. The application id is the first GUID that a cpp_quote
/// defines. Declarations without a uuid are passed over.
/// @throws std::runtime_error that names what is missing.
InterfaceDescription ReadInterfaceDescription(std::string_view idl);

}  // namespace registry_entries
