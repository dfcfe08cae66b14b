#include "configured_client.h"

#include <windows.h>

#include "CZALCADPathHelper.h"
#include "CZALException.h"
#include "base/file_attributes.h"
#include "log/platform_log.h"
#include "pipe_owner.h"

namespace invoker {
namespace {

bool IsMissing(const std::wstring& path) {
  if (FileAttributes(path) != INVALID_FILE_ATTRIBUTES) return false;
  return GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND;
}

/// Sets the members that the file at `path` contains. @return the file's faults in one line, or nothing.
std::wstring ReadFile(const std::wstring& path, ClientConfiguration& configuration) {
  try {
    const ClientFile file = ReadClientFile(path);
    configuration = file.configuration;
    if (file.faults.empty()) return {};
    std::wstring line = L"using defaults for what is wrong in " + path + L":";
    for (const std::wstring& fault : file.faults) line += L" " + fault + L";";
    return line;
  } catch (const CZALException& exception) {
    return L"using the defaults: " + exception.GetErrorMessage();  // it names the path
  }
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
  if (configuration.pipe.empty()) configuration.pipe = DefaultPipe();
  return configuration;
}

}  // namespace invoker
