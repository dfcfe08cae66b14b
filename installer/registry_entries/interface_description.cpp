#include "interface_description.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <regex>
#include <stdexcept>

#include "base/utf8.h"

namespace registry_entries {

namespace {

std::wstring Wide(const std::string& text) { return utf8::Decode<wchar_t>(text); }

std::string WithoutComments(std::string_view idl) {
  return std::regex_replace(std::string(idl), std::regex("//[^\n]*"), "");
}

std::wstring RegistryId(std::string uuid) {
  std::transform(uuid.begin(), uuid.end(), uuid.begin(), [](unsigned char c) { return std::toupper(c); });
  return L"{" + Wide(uuid) + L"}";
}

/// What stands in parentheses after `name`; empty if it is not there.
std::string Attribute(const std::string& attributes, const std::string& name) {
  std::smatch found;
  const bool is_there =
      std::regex_search(attributes, found, std::regex("\\b" + name + "\\(\\s*\"?([^\")]*)\"?\\s*\\)"));
  return is_there ? found[1].str() : std::string();
}

bool IsForAutomation(const std::string& attributes) {
  return std::regex_search(attributes, std::regex("\\b(dual|oleautomation)\\b"));
}

/// The arguments of DEFINE_GUID as the id that they define.
std::wstring DefinedId(const std::string& arguments) {
  const std::regex number("0x([0-9A-Fa-f]+)");
  std::vector<unsigned long> parts;
  for (std::sregex_iterator at(arguments.begin(), arguments.end(), number), end; at != end; ++at) {
    parts.push_back(std::stoul((*at)[1].str(), nullptr, 16));
  }
  if (parts.size() != 11) throw std::runtime_error("DEFINE_GUID takes 11 numbers: " + arguments);
  char text[40];
  std::snprintf(text, sizeof text, "%08lX-%04lX-%04lX-%02lX%02lX-%02lX%02lX%02lX%02lX%02lX%02lX", parts[0],
                parts[1], parts[2], parts[3], parts[4], parts[5], parts[6], parts[7], parts[8], parts[9],
                parts[10]);
  return RegistryId(text);
}

std::wstring ApplicationId(const std::string& text) {
  std::smatch found;
  if (!std::regex_search(text, found, std::regex("DEFINE_GUID\\(\\w+,([^)]*)\\)"))) {
    throw std::runtime_error("no DEFINE_GUID for the application id");
  }
  return DefinedId(found[1].str());
}

}  // namespace

InterfaceDescription ReadInterfaceDescription(std::string_view idl) {
  const std::string text = WithoutComments(idl);
  InterfaceDescription description;
  description.application_id = ApplicationId(text);

  const std::regex declaration("\\[([^\\[\\]]*)\\]\\s*(interface|library|coclass)\\s+(\\w+)");
  for (std::sregex_iterator at(text.begin(), text.end(), declaration), end; at != end; ++at) {
    const std::string attributes = (*at)[1].str(), kind = (*at)[2].str();
    const std::wstring name = Wide((*at)[3].str());
    const std::string uuid = Attribute(attributes, "uuid");
    if (uuid.empty()) continue;
    const std::wstring id = RegistryId(uuid);
    if (kind == "library") {
      description.type_library = {Wide(Attribute(attributes, "helpstring")), id,
                                  Wide(Attribute(attributes, "version"))};
    } else if (kind == "coclass") {
      description.classes[name] = id;
    } else if (IsForAutomation(attributes)) {
      description.interfaces.push_back({name, id});
    }
  }
  const TypeLibrary& library = description.type_library;
  if (library.id.empty()) throw std::runtime_error("no library with a uuid");
  if (library.name.empty()) throw std::runtime_error("the library has no helpstring");
  if (library.version.empty()) throw std::runtime_error("the library has no version");
  return description;
}

}  // namespace registry_entries
