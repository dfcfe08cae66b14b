#include "client_configuration.h"

#include <windows.h>

#include <optional>

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
    const rapidjson::Value* value = Find(name);
    if (!value) return std::nullopt;
    if (value->IsString())
      return CStringHelper::UTF8ToUnicode({value->GetString(), value->GetStringLength()});
    AddFault(name, L"is not a string");
    return std::nullopt;
  }

  std::optional<std::chrono::milliseconds> Milliseconds(const char* name) {
    const rapidjson::Value* value = Find(name);
    if (!value) return std::nullopt;
    if (value->IsUint()) return std::chrono::milliseconds(value->GetUint());
    AddFault(name, L"is not a whole number of milliseconds");
    return std::nullopt;
  }

  /// The faults of the members that were read; empty if there are none.
  const std::wstring& Faults() const { return m_faults; }

 private:
  const rapidjson::Value* Find(const char* name) const {
    if (!m_root.IsObject()) return nullptr;
    const auto member = m_root.FindMember(name);
    return member == m_root.MemberEnd() ? nullptr : &member->value;
  }

  void AddFault(const char* name, const wchar_t* fault) {
    m_faults += L" \"" + CStringHelper::UTF8ToUnicode(name) + L"\" " + fault + L";";
  }

  const rapidjson::Value& m_root;
  std::wstring m_faults;
};

/// Sets the members that the file at `path` contains. @return the file's faults.
std::wstring ReadFile(const std::wstring& path, ClientConfiguration& configuration) {
  CJsonObject file;
  try {
    file.CreateFromFile(path);
  } catch (const CZALException& exception) {
    return L" " + exception.GetErrorMessage() + L";";
  }
  Members members(file);
  configuration.pipe = members.Text("pipe").value_or(L"");
  configuration.program = members.Text("client").value_or(L"");
  configuration.start_timeout = members.Milliseconds("startTimeoutMs").value_or(configuration.start_timeout);
  return members.Faults();
}

}  // namespace

ClientConfiguration ReadClientConfiguration(const std::wstring& name, const std::wstring& file) {
  ClientConfiguration configuration;
  std::wstring path;
  CZALCADPathHelper::GetCADCfgPath(name, file, path);
  if (!path.empty() && !IsMissing(path)) {
    const std::wstring faults = ReadFile(path, configuration);
    if (!faults.empty()) LogPlatformError(L"using defaults for what is wrong in " + path + L":" + faults);
  }
  if (configuration.pipe.empty()) configuration.pipe = kDefaultPipePrefix + UserSidText();
  return configuration;
}

}  // namespace invoker
