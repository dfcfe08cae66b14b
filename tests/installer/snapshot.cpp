#include "snapshot.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <utility>

#include "base/unique_registry_key.h"

namespace {

bool BeginsWith(std::wstring_view text, std::wstring_view start) {
  return text.size() >= start.size() && _wcsnicmp(text.data(), start.data(), start.size()) == 0;
}

bool BeginsWithOne(std::wstring_view text, const std::vector<std::wstring>& starts) {
  return std::any_of(starts.begin(), starts.end(),
                     [text](const std::wstring& start) { return BeginsWith(text, start); });
}

struct SearchCloser {
  using pointer = HANDLE;
  void operator()(HANDLE search) const noexcept { FindClose(search); }
};

std::wstring TypeText(DWORD type) {
  switch (type) {
    case REG_SZ:
      return L"REG_SZ";
    case REG_EXPAND_SZ:
      return L"REG_EXPAND_SZ";
    case REG_DWORD:
      return L"REG_DWORD";
    default:
      return L"type " + std::to_wstring(type);
  }
}

std::wstring DataText(DWORD type, const std::vector<BYTE>& data) {
  std::wstring text = TypeText(type) + L" ";
  if (type == REG_SZ || type == REG_EXPAND_SZ) {
    const std::wstring characters(reinterpret_cast<const wchar_t*>(data.data()),
                                  data.size() / sizeof(wchar_t));
    return text + characters.substr(0, characters.find_last_not_of(L'\0') + 1);
  }
  if (type == REG_DWORD && data.size() == sizeof(DWORD)) {
    return text + std::to_wstring(*reinterpret_cast<const DWORD*>(data.data()));
  }
  for (const BYTE byte : data) {
    wchar_t hex[3];
    std::swprintf(hex, std::size(hex), L"%02x", static_cast<unsigned>(byte));
    text += hex;
  }
  return text;
}

/// Walks through folders and keys and notes what it meets.
class Survey {
 public:
  explicit Survey(const Scope& scope) : m_scope(scope) {
    for (const std::wstring& folder : scope.folders) AddFolder(folder);
    for (const std::wstring& key : scope.keys) AddRoot(key);
  }

  Snapshot Result() && { return std::move(m_snapshot); }

 private:
  bool IsLeftOut(const std::wstring& name) const { return BeginsWithOne(name, m_scope.left_out); }

  void AddFolder(const std::wstring& folder) {
    WIN32_FIND_DATAW found{};
    const std::unique_ptr<void, SearchCloser> search(FindFirstFileExW(
        (folder + L"\\*").c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr, 0));
    if (search.get() == INVALID_HANDLE_VALUE) return;
    do {
      const std::wstring_view name = found.cFileName;
      if (name != L"." && name != L"..") AddFound(folder + L"\\" + found.cFileName, found);
    } while (FindNextFileW(search.get(), &found));
  }

  void AddFound(const std::wstring& path, const WIN32_FIND_DATAW& found) {
    if (IsLeftOut(path)) return;
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      m_snapshot[path + L"\\"] = L"folder";
      // A link may lead back to where it lies.
      if (!(found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)) AddFolder(path);
      return;
    }
    const FILETIME& time = found.ftLastWriteTime;
    m_snapshot[path] = std::to_wstring(found.nFileSizeLow) + L" bytes, time " +
                       std::to_wstring((std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
  }

  void AddRoot(const std::wstring& name) {
    const bool is_users = BeginsWith(name, L"HKCU");
    HKEY key = nullptr;
    const std::size_t separator = name.find(L'\\');
    const wchar_t* const path = separator == name.npos ? L"" : name.c_str() + separator + 1;
    if (RegOpenKeyExW(is_users ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key) ==
        ERROR_SUCCESS) {
      AddKey(UniqueRegistryKey(key), name);
    }
  }

  // Counts first: each call asks Wine's server, and there are thousands of keys.
  void AddKey(const UniqueRegistryKey& key, const std::wstring& path) {
    DWORD keys = 0, longest_key = 0, values = 0, longest_value = 0, longest_data = 0;
    RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &keys, &longest_key, nullptr, &values,
                     &longest_value, &longest_data, nullptr, nullptr);
    std::wstring name(std::max(longest_key, longest_value) + 1, L'\0');
    std::vector<BYTE> data(longest_data + 1);
    for (DWORD index = 0; index < values; ++index) {
      DWORD length = static_cast<DWORD>(name.size()), size = static_cast<DWORD>(data.size()), type = 0;
      if (RegEnumValueW(key.get(), index, name.data(), &length, nullptr, &type, data.data(), &size) ==
          ERROR_SUCCESS) {
        AddValue(path + L"\\\\" + name.substr(0, length), type,
                 {data.begin(), data.begin() + static_cast<int>(size)});
      }
    }
    for (DWORD index = 0; index < keys; ++index) {
      DWORD length = static_cast<DWORD>(name.size());
      if (RegEnumKeyExW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) ==
          ERROR_SUCCESS) {
        AddChild(key, name.substr(0, length), path);
      }
    }
  }

  void AddValue(const std::wstring& name, DWORD type, const std::vector<BYTE>& data) {
    if (!IsLeftOut(name)) m_snapshot[name] = DataText(type, data);
  }

  void AddChild(const UniqueRegistryKey& parent, const std::wstring& name, const std::wstring& parents_path) {
    const std::wstring path = parents_path + L"\\" + name;
    if (IsLeftOut(path)) return;
    m_snapshot[path + L"\\"] = L"key";
    HKEY child = nullptr;
    // A link would show the same entries under a second name.
    if (RegOpenKeyExW(parent.get(), name.c_str(), REG_OPTION_OPEN_LINK, KEY_READ, &child) == ERROR_SUCCESS) {
      AddKey(UniqueRegistryKey(child), path);
    }
  }

  const Scope& m_scope;
  Snapshot m_snapshot;
};

std::vector<std::wstring> Choose(const std::vector<std::wstring>& changes,
                                 const std::vector<std::wstring>& prefixes, bool are_below) {
  std::vector<std::wstring> chosen;
  std::copy_if(changes.begin(), changes.end(), std::back_inserter(chosen), [&](const std::wstring& change) {
    return BeginsWithOne(std::wstring_view(change).substr(2), prefixes) == are_below;
  });
  return chosen;
}

}  // namespace

Snapshot TakeSnapshot(const Scope& scope) { return Survey(scope).Result(); }

std::vector<std::wstring> Changes(const Snapshot& before, const Snapshot& after) {
  std::vector<std::wstring> changes;
  for (const auto& [name, what] : before) {
    const auto found = after.find(name);
    if (found == after.end()) {
      changes.push_back(L"- " + name + L" = " + what);
    } else if (found->second != what) {
      changes.push_back(L"~ " + name + L" = " + found->second + L", was " + what);
    }
  }
  for (const auto& [name, what] : after) {
    if (!before.contains(name)) changes.push_back(L"+ " + name + L" = " + what);
  }
  std::sort(changes.begin(), changes.end());
  return changes;
}

std::vector<std::wstring> ChangesBelow(const std::vector<std::wstring>& changes,
                                       const std::vector<std::wstring>& prefixes) {
  return Choose(changes, prefixes, true);
}

std::vector<std::wstring> ChangesNotBelow(const std::vector<std::wstring>& changes,
                                          const std::vector<std::wstring>& prefixes) {
  return Choose(changes, prefixes, false);
}
