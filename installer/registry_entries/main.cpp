// Prints what registering the add-in writes to the registry, as a part of the package's source. See Usage.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/utf8.h"
#include "interface_description.h"
#include "registry_script/registry_script.h"
#include "wix_fragment.h"

namespace {

using registry_entries::InterfaceDescription;
using registry_script::Replacements;

constexpr const char* kUsage =
    "usage: registry_entries MODULE IDL [CLASS=SCRIPT | library=SCRIPT | interfaces=SCRIPT] ...\n"
    "\n"
    "Prints the entries of registration scripts as a WiX fragment. MODULE is the name of the DLL in the "
    "package's\n"
    "folder. IDL has the ids. Each SCRIPT is read once: for the class of that name, for the type library, or "
    "for\n"
    "each interface of it.\n";

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Reads scripts and collects their entries.
class Scripts {
 public:
  Scripts(const std::string& module, InterfaceDescription description)
      : m_module(utf8::Decode<wchar_t>(module)), m_description(std::move(description)) {}

  /// Adds what `argument`, such as "library=type_library.rgs", names.
  void Add(const std::string& argument) {
    const std::size_t sign = argument.find('=');
    if (sign == argument.npos) throw std::runtime_error("no \"=\" in " + argument);
    const std::string what = argument.substr(0, sign), path = argument.substr(sign + 1);
    if (what == "interfaces") {
      for (const auto& described : m_description.interfaces) {
        Read(path, {{L"IID", described.id}, {L"NAME", described.name}});
      }
    } else if (what == "library") {
      Read(path, {{L"NAME", m_description.type_library.name}});
    } else {
      const auto found = m_description.classes.find(utf8::Decode<wchar_t>(what));
      if (found == m_description.classes.end()) throw std::runtime_error("no class of the name " + what);
      Read(path, {{L"CLSID", found->second}});
    }
  }

  const std::vector<registry_script::Root>& Roots() const { return m_roots; }

 private:
  void Read(const std::string& path, Replacements replacements) {
    replacements.insert({{L"MODULE", L"[InstallFolder]" + m_module},
                         // The folder without a separator at its end, which [InstallFolder] has.
                         {L"FOLDER", L"[MakersFolder]$(var.FolderName)"},
                         {L"APPID", m_description.application_id},
                         {L"LIBID", m_description.type_library.id},
                         {L"VERSION", m_description.type_library.version}});
    const std::string text = ReadFile(path);
    if (text.find_first_of("[]") != text.npos) {
      throw std::runtime_error(path + ": brackets have a meaning of their own in a package");
    }
    try {
      for (auto& root : registry_script::Parse(utf8::Decode<wchar_t>(text), replacements)) {
        m_roots.push_back(std::move(root));
      }
    } catch (const registry_script::Error& error) {
      throw std::runtime_error(path + ", " + utf8::Encode<wchar_t>(error.Message()));
    }
  }

  std::wstring m_module;
  InterfaceDescription m_description;
  std::vector<registry_script::Root> m_roots;
};

}  // namespace

int main(int count, char** arguments) try {
  if (count < 4) {
    std::cerr << kUsage;
    return 2;
  }
  Scripts scripts(arguments[1], registry_entries::ReadInterfaceDescription(ReadFile(arguments[2])));
  for (int at = 3; at < count; ++at) scripts.Add(arguments[at]);
  std::cout << registry_entries::WixFragment(scripts.Roots());
  return std::cout.flush() ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << "registry_entries: " << error.what() << '\n';
  return 1;
}
