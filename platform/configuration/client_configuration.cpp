#include "configuration/client_configuration.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace {

/// The members of the file. A member of a wrong type is a fault and counts as missing.
class Members {
 public:
  explicit Members(const CJsonObject& file) : m_root(*file.Share()) {
    if (!m_root.IsObject()) m_faults.emplace_back(L"the root is not an object");
  }

  std::optional<std::wstring> Text(const char* name) {
    const CJsonObject::Value* value = Find(name);
    if (!value) return std::nullopt;
    if (value->IsString())
      return CStringHelper::UTF8ToUnicode({value->GetString(), value->GetStringLength()});
    AddFault(name, L"is not a string");
    return std::nullopt;
  }

  std::optional<std::chrono::milliseconds> Milliseconds(const char* name) {
    const CJsonObject::Value* value = Find(name);
    if (!value) return std::nullopt;
    if (value->IsUint()) return std::chrono::milliseconds(value->GetUint());
    AddFault(name, L"is not a whole number of milliseconds");
    return std::nullopt;
  }

  /// The faults of the members that were read, and those that nothing has read; empty if there are none.
  std::vector<std::wstring> Faults() const {
    std::vector<std::wstring> faults = m_faults;
    if (!m_root.IsObject()) return faults;
    for (const auto& member : m_root.GetObject()) {
      const std::string_view name(member.name.GetString(), member.name.GetStringLength());
      if (std::ranges::count(m_read, name) == 0) faults.push_back(Fault(name, L"is not known"));
    }
    return faults;
  }

 private:
  const CJsonObject::Value* Find(const char* name) {
    m_read.emplace_back(name);
    if (!m_root.IsObject()) return nullptr;
    const auto member = m_root.FindMember(name);
    return member == m_root.MemberEnd() ? nullptr : &member->value;
  }

  static std::wstring Fault(std::string_view name, const wchar_t* fault) {
    return L"\"" + CStringHelper::UTF8ToUnicode(name) + L"\" " + fault;
  }

  void AddFault(const char* name, const wchar_t* fault) { m_faults.push_back(Fault(name, fault)); }

  const CJsonObject::Value& m_root;
  std::vector<std::string_view> m_read;  // names of members
  std::vector<std::wstring> m_faults;
};

}  // namespace

ClientFile ReadClientMembers(const CJsonObject& file) {
  ClientFile read;
  ClientConfiguration& configuration = read.configuration;
  Members members(file);
  configuration.pipe = members.Text("pipe").value_or(L"");
  configuration.program = members.Text("client").value_or(L"");
  configuration.start_timeout = members.Milliseconds("startTimeoutMs").value_or(configuration.start_timeout);
  members.Text("$schema");  // for editors
  read.faults = members.Faults();
  return read;
}
