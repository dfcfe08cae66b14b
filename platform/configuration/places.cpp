#include "configuration/places.h"

#include <windows.h>

#include <algorithm>

#include "base/file_attributes.h"
#include "configuration/names.h"

namespace {

// The variable's value; empty if it is not set. Does not use the C runtime, which copied the environment when
// the process started.
std::wstring EnvironmentVariable(const wchar_t* name) {
  std::wstring value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

}  // namespace

std::wstring PlatformFolder() {
  std::wstring root = EnvironmentVariable(L"TAVO_HOME");
  if (root.empty()) {
    root = EnvironmentVariable(L"APPDATA");
    if (!root.empty()) root += L"\\TAVO";
  }
  while (root.ends_with(L'\\') || root.ends_with(L'/')) root.pop_back();
  return root;
}

std::wstring LogFolder() {
  const std::wstring root = PlatformFolder();
  return root.empty() ? root : root + L"\\log";
}

std::vector<std::wstring> ConfigurationPlaces(const std::wstring& name, const std::wstring& file,
                                              const std::wstring& module_folder) {
  const std::wstring place = L"\\config\\" + name + L"\\" + file;
  std::vector<std::wstring> places;
  if (const std::wstring root = PlatformFolder(); !root.empty()) places.push_back(root + place);
  if (const std::wstring all_users = EnvironmentVariable(L"PROGRAMDATA"); !all_users.empty()) {
    places.push_back(all_users + L"\\TAVO" + place);
  }
  if (!module_folder.empty()) places.push_back(module_folder + L"\\config\\" + file);
  return places;
}

std::vector<std::wstring> LogConfigurationPlaces(const std::wstring& log_folder,
                                                 const std::wstring& module_folder) {
  std::vector<std::wstring> places =
      ConfigurationPlaces(kConfigurationName, kLogPropertiesFile, module_folder);
  if (!log_folder.empty()) places.insert(places.begin(), log_folder + L"/" + kLogPropertiesFile);
  return places;
}

std::wstring FirstFile(const std::vector<std::wstring>& places) {
  const auto found = std::ranges::find_if(places, IsFile);
  return found == places.end() ? std::wstring() : *found;
}
