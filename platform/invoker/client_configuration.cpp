#include "client_configuration.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "CJsonObject.h"
#include "CZALCADPathHelper.h"
#include "CZALException.h"
#include "base/file_attributes.h"
#include "log/platform_log.h"
#include "pipe_owner.h"

namespace invoker {
namespace {

constexpr wchar_t kDefaultPipePrefix[] = L"tavo-plm-client-";

bool IsMissing(const std::wstring& path) {
  if (FileAttributes(path) != INVALID_FILE_ATTRIBUTES) return false;
  return GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND;
}

/// The members of the file. A member of a wrong type is a fault and counts as missing.
class Members {
 public:
  explicit Members(const CJsonObject& file) : m_root(*file.Share()) {
    if (!m_root.IsObject()) m_faults = L" the root is not an object;";
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
  std::wstring Faults() const {
    std::wstring faults = m_faults;
    if (!m_root.IsObject()) return faults;
    for (const auto& member : m_root.GetObject()) {
      const std::string_view name(member.name.GetString(), member.name.GetStringLength());
      if (std::ranges::count(m_read, name) == 0) faults += Fault(name, L"is not known");
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
    return L" \"" + CStringHelper::UTF8ToUnicode(name) + L"\" " + fault + L";";
  }

  void AddFault(const char* name, const wchar_t* fault) { m_faults += Fault(name, fault); }

  const CJsonObject::Value& m_root;
  std::vector<std::string_view> m_read;  // names of members
  std::wstring m_faults;
};

/// `text` with the values of its environment variables; a variable that does not exist stays as it is
/// written.
std::wstring ExpandVariables(const std::wstring& text) {
  const DWORD size = ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
  std::wstring expanded(size, L'\0');
  const DWORD used = ExpandEnvironmentStringsW(text.c_str(), expanded.data(), size);
  if (used == 0 || used > size) return text;
  expanded.resize(used - 1);  // without the null character
  return expanded;
}

/// Sets the members that the file at `path` contains. @return the file's faults in one line, or nothing.
std::wstring ReadFile(const std::wstring& path, ClientConfiguration& configuration) {
  CJsonObject file;
  try {
    file.CreateFromFile(path);
  } catch (const CZALException& exception) {
    return L"using the defaults: " + exception.GetErrorMessage();  // it names the path
  }
  Members members(file);
  configuration.pipe = members.Text("pipe").value_or(L"");
  configuration.program = ExpandVariables(members.Text("client").value_or(L""));
  configuration.start_timeout = members.Milliseconds("startTimeoutMs").value_or(configuration.start_timeout);
  members.Text("$schema");  // for editors
  const std::wstring faults = members.Faults();
  return faults.empty() ? faults : L"using defaults for what is wrong in " + path + L":" + faults;
}

}  // namespace

ClientConfiguration ReadClientConfiguration(const std::wstring& name, const std::wstring& file) {
  ClientConfiguration configuration;
  std::wstring path;
  CZALCADPathHelper::GetCADCfgPath(name, file, path);
  if (!path.empty() && !IsMissing(path)) {
    const std::wstring faults = ReadFile(path, configuration);
    if (!faults.empty()) LogPlatformError(faults);
  }
  if (configuration.pipe.empty()) configuration.pipe = kDefaultPipePrefix + UserSidText();
  return configuration;
}

}  // namespace invoker
