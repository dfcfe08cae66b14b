#include "registry.h"

#include <stdexcept>
#include <utility>
#include <vector>

#include "base/utf8.h"

namespace {

std::wstring DataText(DWORD type, const std::vector<BYTE>& data, DWORD size) {
  if (type == REG_DWORD) return L"dword:" + std::to_wstring(*reinterpret_cast<const DWORD*>(data.data()));
  if (type != REG_SZ) return L"type " + std::to_wstring(type);
  // The size counts the terminator.
  return std::wstring(reinterpret_cast<const wchar_t*>(data.data()), size / sizeof(wchar_t) - 1);
}

void Collect(HKEY key, const std::wstring& path, RegistryContents& contents) {
  wchar_t name[256];
  std::vector<BYTE> data(4096);
  DWORD values = 0;
  for (;; ++values) {
    DWORD length = 256, size = static_cast<DWORD>(data.size()), type = 0;
    if (RegEnumValueW(key, values, name, &length, nullptr, &type, data.data(), &size) != ERROR_SUCCESS) break;
    contents[path + L"\\" + name] = DataText(type, data, size);
  }
  if (values == 0) contents[path + L"\\"] = L"(no value)";
  for (DWORD index = 0;; ++index) {
    DWORD length = 256;
    if (RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    HKEY child = nullptr;
    if (RegOpenKeyExW(key, name, 0, KEY_READ, &child) != ERROR_SUCCESS) continue;
    Collect(child, path.empty() ? name : path + L"\\" + name, contents);
    RegCloseKey(child);
  }
}

}  // namespace

RegistryContents ReadRegistry(HKEY root, const std::wstring& path) {
  RegistryContents contents;
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return contents;
  Collect(key, L"", contents);
  RegCloseKey(key);
  return contents;
}

bool RegistryKeyExists(HKEY root, const std::wstring& path) { return !ReadRegistry(root, path).empty(); }

ForeignKey::ForeignKey(HKEY root, std::wstring path) : m_root(root), m_path(std::move(path)) {
  HKEY key = nullptr;
  DWORD disposition = 0;
  RegCreateKeyExW(root, m_path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &key,
                  &disposition);
  const DWORD value = 1;
  // One that exists already is somebody else's, and must not be removed.
  if (disposition == REG_CREATED_NEW_KEY) {
    RegSetValueExW(key, L"Foreign", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
  }
  RegCloseKey(key);
  if (disposition != REG_CREATED_NEW_KEY) {
    throw std::runtime_error("no new key: " + utf8::Encode<wchar_t>(m_path));
  }
}

ForeignKey::~ForeignKey() { RegDeleteTreeW(m_root, m_path.c_str()); }
