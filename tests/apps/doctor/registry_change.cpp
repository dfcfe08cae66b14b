#include "registry_change.h"

#include <stdexcept>
#include <utility>

#include "base/unique_registry_key.h"
#include "base/utf8.h"

namespace {

UniqueRegistryKey Open(HKEY root, const std::wstring& path, REGSAM access) {
  HKEY key = nullptr;
  RegOpenKeyExW(root, path.c_str(), 0, access, &key);
  return UniqueRegistryKey(key);
}

void Set(HKEY key, const std::wstring& name, const std::wstring& text) {
  const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  RegSetValueExW(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), size);
}

void Set(HKEY key, const std::wstring& name, std::uint32_t number) {
  RegSetValueExW(key, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
}

void Set(HKEY key, const std::wstring& name, std::monostate) { RegDeleteValueW(key, name.c_str()); }

}  // namespace

RegistryChange::RegistryChange(HKEY root, std::wstring path, std::wstring name,
                               const std::variant<std::monostate, std::wstring, std::uint32_t>& data)
    : m_root(root), m_path(std::move(path)), m_name(std::move(name)) {
  const UniqueRegistryKey key = Open(m_root, m_path, KEY_ALL_ACCESS);
  if (!key) throw std::runtime_error("no key " + utf8::Encode<wchar_t>(m_path));
  DWORD size = 0;
  if (RegQueryValueExW(key.get(), m_name.c_str(), nullptr, &m_type, nullptr, &size) == ERROR_SUCCESS) {
    m_before.emplace(size);
    RegQueryValueExW(key.get(), m_name.c_str(), nullptr, nullptr, m_before->data(), &size);
  }
  std::visit([&](const auto& value) { Set(key.get(), m_name, value); }, data);
}

RegistryChange::~RegistryChange() {
  const UniqueRegistryKey key = Open(m_root, m_path, KEY_ALL_ACCESS);
  if (m_before) {
    RegSetValueExW(key.get(), m_name.c_str(), 0, m_type, m_before->data(),
                   static_cast<DWORD>(m_before->size()));
  } else {
    RegDeleteValueW(key.get(), m_name.c_str());
  }
}

PlantedKey::PlantedKey(HKEY root, const std::wstring& path,
                       const std::variant<std::wstring, std::uint32_t>& data, REGSAM half)
    : m_root(root), m_half(half) {
  for (std::size_t end = 0; end != std::wstring::npos;) {
    end = path.find(L'\\', end + 1);
    HKEY made = nullptr;
    DWORD disposition = 0;
    RegCreateKeyExW(m_root, path.substr(0, end).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS | m_half, nullptr,
                    &made, &disposition);
    const UniqueRegistryKey key(made);
    if (disposition == REG_CREATED_NEW_KEY) m_made.push_back(path.substr(0, end));
    if (end == std::wstring::npos) {
      if (disposition != REG_CREATED_NEW_KEY) {
        throw std::runtime_error("no new key: " + utf8::Encode<wchar_t>(path));
      }
      std::visit([&](const auto& value) { Set(key.get(), L"", value); }, data);
    }
  }
}

PlantedKey::~PlantedKey() {
  for (auto path = m_made.rbegin(); path != m_made.rend(); ++path) {
    RegDeleteKeyExW(m_root, path->c_str(), m_half, 0);
  }
}
