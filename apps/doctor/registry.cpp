#include "registry.h"

namespace doctor {

RegistryKey::RegistryKey(HKEY root, const std::wstring& path, View view) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ | static_cast<REGSAM>(view), &key) == ERROR_SUCCESS) {
    m_key.reset(key);
  }
}

std::optional<std::wstring> RegistryKey::Text(const std::wstring& name) const {
  if (!m_key) return std::nullopt;
  DWORD size = 0;
  if (RegGetValueW(m_key.get(), nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
  size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (RegGetValueW(m_key.get(), nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  text.resize(text.find(L'\0'));
  return text;
}

std::optional<std::uint32_t> RegistryKey::Number(const std::wstring& name) const {
  DWORD number = 0;
  DWORD size = sizeof number;
  if (!m_key || RegGetValueW(m_key.get(), nullptr, name.c_str(), RRF_RT_REG_DWORD, nullptr, &number, &size) !=
                    ERROR_SUCCESS) {
    return std::nullopt;
  }
  return number;
}

std::vector<std::wstring> RegistryKey::Subkeys() const {
  std::vector<std::wstring> names;
  constexpr DWORD kLongestName = 256;
  wchar_t name[kLongestName] = {};
  DWORD length = kLongestName;
  for (DWORD index = 0; m_key && RegEnumKeyExW(m_key.get(), index, name, &length, nullptr, nullptr, nullptr,
                                               nullptr) == ERROR_SUCCESS;
       ++index, length = kLongestName) {
    names.emplace_back(name, length);
  }
  return names;
}

}  // namespace doctor
