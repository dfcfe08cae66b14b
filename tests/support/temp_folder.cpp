#include "temp_folder.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <stdexcept>

#include "CFileHelper.h"
#include "CStringHelper.h"
#include "base/system_path.h"
#include "base/unique_handle.h"

namespace {
// An open file.
class File {
 public:
  File(const std::wstring& path, DWORD access, DWORD disposition)
      : m_path(path),
        m_handle(OwnHandle(CreateFileW(SystemPath(path).c_str(), access,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                       disposition, FILE_ATTRIBUTE_NORMAL, nullptr))) {
    Check(m_handle != nullptr, "cannot open ");
  }

  std::string Read() const {
    std::string bytes(GetFileSize(m_handle.get(), nullptr), '\0');
    DWORD count = 0;
    Check(ReadFile(m_handle.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr),
          "cannot read ");
    bytes.resize(count);
    return bytes;
  }

  void Write(std::string_view bytes) const {
    DWORD count = 0;
    Check(WriteFile(m_handle.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) &&
              count == bytes.size(),
          "cannot write ");
  }

 private:
  void Check(bool done, const char* failure) const {
    if (!done) throw std::runtime_error(failure + CStringHelper::UnicodeToUTF8(m_path));
  }

  std::wstring m_path;
  UniqueHandle m_handle;
};

void ForEachEntry(const std::wstring& folder, const std::function<void(const WIN32_FIND_DATAW&)>& visit) {
  WIN32_FIND_DATAW entry;
  HANDLE search = FindFirstFileW((SystemPath(folder) + L"\\*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring_view name = entry.cFileName;
    if (name != L"." && name != L"..") visit(entry);
  } while (FindNextFileW(search, &entry));
  FindClose(search);
}

void RemoveTree(const std::wstring& folder) {
  ForEachEntry(folder, [&](const WIN32_FIND_DATAW& entry) {
    const std::wstring path = folder + L"\\" + entry.cFileName;
    const std::wstring system_path = SystemPath(path);
    SetFileAttributesW(system_path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      RemoveTree(path);
    } else {
      DeleteFileW(system_path.c_str());
    }
  });
  RemoveDirectoryW(SystemPath(folder).c_str());
}

std::wstring NewFolderPath() {
  static std::atomic<unsigned> count = 0;
  wchar_t temp[MAX_PATH + 1];
  GetTempPathW(static_cast<DWORD>(std::size(temp)), temp);
  return temp + (L"tavo-test-" + std::to_wstring(GetCurrentProcessId())) + L"-" +
         std::to_wstring(GetTickCount64()) + L"-" + std::to_wstring(++count);
}
}  // namespace

TempFolder::TempFolder() : m_path(NewFolderPath()) {
  if (!CFileHelper::CreateFolder(m_path, true)) {
    throw std::runtime_error("cannot make " + CStringHelper::UnicodeToUTF8(m_path));
  }
}

TempFolder::~TempFolder() { RemoveTree(m_path); }

std::wstring TempFolder::Path(std::wstring_view name) const {
  return name.empty() ? m_path : m_path + L"\\" + std::wstring(name);
}

std::wstring TempFolder::MakeFolder(std::wstring_view name) const {
  std::wstring path = Path(name);
  if (!CFileHelper::CreateFolder(path, false)) {
    throw std::runtime_error("cannot make " + CStringHelper::UnicodeToUTF8(path));
  }
  return path;
}

std::wstring TempFolder::Write(std::wstring_view name, std::string_view bytes) const {
  const auto separator = name.find_last_of(L"\\/");
  if (separator != std::wstring_view::npos) MakeFolder(name.substr(0, separator));
  std::wstring path = Path(name);
  WriteFileBytes(path, bytes);
  return path;
}

std::wstring TempFolder::WriteText(std::wstring_view name, std::wstring_view text) const {
  return Write(name, CStringHelper::UnicodeToUTF8(text));
}

std::string TempFolder::Read(std::wstring_view name) const { return ReadFileBytes(Path(name)); }

std::wstring TempFolder::ReadText(std::wstring_view name) const {
  return CStringHelper::UTF8ToUnicode(Read(name));
}

bool TempFolder::Exists(std::wstring_view name) const {
  return GetFileAttributesW(SystemPath(Path(name)).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::vector<std::wstring> TempFolder::List(std::wstring_view name) const {
  std::vector<std::wstring> names;
  ForEachEntry(Path(name), [&](const WIN32_FIND_DATAW& entry) { names.emplace_back(entry.cFileName); });
  std::sort(names.begin(), names.end());
  return names;
}

std::string ReadFileBytes(const std::wstring& path) { return File(path, GENERIC_READ, OPEN_EXISTING).Read(); }

void WriteFileBytes(const std::wstring& path, std::string_view bytes) {
  File(path, GENERIC_WRITE, CREATE_ALWAYS).Write(bytes);
}
