#include "wix_fragment.h"

#include <optional>
#include <stdexcept>
#include <string_view>
#include <variant>

#include "base/utf8.h"

namespace registry_entries {

namespace {

using registry_script::Key;
using registry_script::Removal;
using registry_script::Root;
using registry_script::RootKey;
using registry_script::Value;

std::string Attribute(std::string_view name, std::wstring_view value) {
  std::string text = " " + std::string(name) + "=\"";
  for (const char c : utf8::Encode<wchar_t>(value)) {
    switch (c) {
      case '&':
        text += "&amp;";
        break;
      case '<':
        text += "&lt;";
        break;
      case '>':
        text += "&gt;";
        break;
      case '"':
        text += "&quot;";
        break;
      default:
        text += c;
    }
  }
  return text + '"';
}

/// An entry; an empty name is the default value of the key.
std::string Element(std::wstring_view key, std::wstring_view name, std::string_view type,
                    std::wstring_view value, bool is_key_path = false) {
  return "      <RegistryValue Root=\"HKLM\"" + Attribute("Key", key) +
         (name.empty() ? std::string() : Attribute("Name", name)) + " Type=\"" + std::string(type) + "\"" +
         Attribute("Value", value) + (is_key_path ? " KeyPath=\"yes\"" : "") + "/>\n";
}

/// The number by which the host starts the add-in with itself, or does not.
struct StartupFlag {
  std::wstring key;
  std::wstring name;
  std::wstring number;
};

class Entries {
 public:
  explicit Entries(const std::vector<Root>& roots) {
    for (const Root& root : roots) {
      const std::wstring prefix = root.root == RootKey::kClassesRoot ? L"SOFTWARE\\Classes\\" : L"";
      for (const Key& key : root.keys) Add(prefix + key.name, key);
    }
    if (!m_flag)
      throw std::runtime_error("no number among the entries: which one is the host's start-up flag?");
  }

  const std::string& Elements() const { return m_elements; }
  const StartupFlag& Flag() const { return *m_flag; }

 private:
  void Add(const std::wstring& path, const Key& key) {
    AddRemoval(path, key);
    for (const Value& value : key.values) AddValue(path, value);
    for (const Key& child : key.keys) Add(path + L"\\" + child.name, child);
  }

  // The installer's signs in place of a name: "-" is a key that goes with its contents, "*" one that is also
  // made.
  void AddRemoval(const std::wstring& path, const Key& key) {
    const bool is_empty = key.values.empty() && key.keys.empty();
    if (key.removal == Removal::kWithContents) {
      m_elements += Element(path, is_empty ? L"*" : L"-", "string", L"");
    } else if (is_empty) {
      throw std::runtime_error("the empty key is not marked ForceRemove: " + utf8::Encode<wchar_t>(path));
    }
  }

  void AddValue(const std::wstring& path, const Value& value) {
    if (const auto* const number = std::get_if<std::uint32_t>(&value.data)) {
      if (m_flag) throw std::runtime_error("a second number: " + utf8::Encode<wchar_t>(path));
      m_flag = {path, value.name, std::to_wstring(*number)};
      return;
    }
    // The first one is that by which the installer sees whether the entries are there.
    const bool is_first = m_elements.find("KeyPath") == m_elements.npos;
    m_elements += Element(path, value.name, "string", std::get<std::wstring>(value.data), is_first);
  }

  std::string m_elements;
  std::optional<StartupFlag> m_flag;
};

std::string Component(std::string_view id, std::string_view guid, const std::string& elements) {
  return "    <Component Id=\"" + std::string(id) + "\" Guid=\"" + std::string(guid) + "\" Win64=\"yes\">\n" +
         elements + "    </Component>\n";
}

std::string Search(const StartupFlag& flag) {
  return "    <Property Id=\"LOADEDATSTARTUP\">\n"
         "      <RegistrySearch Id=\"LoadedAtStartup\" Root=\"HKLM\"" +
         Attribute("Key", flag.key) + Attribute("Name", flag.name) +
         " Type=\"raw\" Win64=\"yes\"/>\n"
         "    </Property>\n";
}

}  // namespace

std::string WixFragment(const std::vector<Root>& roots) {
  const Entries entries(roots);
  const StartupFlag& flag = entries.Flag();
  // Both are known by the same entry, so neither can have an id that is made from it.
  return "<Include>\n" + Search(flag) + "    <DirectoryRef Id=\"InstallFolder\">\n" +
         Component("Registration", "*", entries.Elements()) +
         Component("LoadOnDemand", "$(var.LoadOnDemandGuid)",
                   Element(flag.key, flag.name, "integer", flag.number, true)) +
         Component("LoadAtStartup", "$(var.LoadAtStartupGuid)",
                   Element(flag.key, flag.name, "integer", L"1", true)) +
         "    </DirectoryRef>\n</Include>\n";
}

}  // namespace registry_entries
