#include "shared_file_appender.h"

#include <windows.h>

#include <log4cplus/helpers/property.h>
#include <log4cplus/helpers/stringhelper.h>
#include <log4cplus/spi/factory.h>

#include <functional>
#include <memory>

#include "CFileHelper.h"
#include "CFilePathHelper.h"
#include "CStringHelper.h"
#include "base/system_path.h"
#include "base/system_text.h"
#include "base/unique_handle.h"
#include "configuration/log_names.h"

namespace {
constexpr unsigned long long kDefaultMaxFileSize = 10 * 1024 * 1024;
// How long to wait while another process writes its line. A process that hangs there must not block this one.
constexpr DWORD kLockTimeoutMilliseconds = 500;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Null if the file cannot be opened.
UniqueHandle Open(const std::wstring& path, DWORD access, DWORD disposition) {
  return OwnHandle(
      CreateFileW(SystemPath(path).c_str(), access, kShareAll, nullptr, disposition, 0, nullptr));
}

/// Locks the mutex of the processes that share the file, unless the wait times out.
class FileLock {
 public:
  explicit FileLock(HANDLE mutex) : m_mutex(mutex) {
    const DWORD result = WaitForSingleObject(mutex, kLockTimeoutMilliseconds);
    m_isHeld = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
  }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  ~FileLock() {
    if (m_isHeld) ReleaseMutex(m_mutex);
  }
  bool IsHeld() const { return m_isHeld; }

 private:
  HANDLE m_mutex;
  bool m_isHeld;
};

// A hash, because the name of a kernel object cannot be as long as a path.
std::wstring MutexName(const std::wstring& path) {
  return L"Global\\tavo-log-" + std::to_wstring(std::hash<std::wstring>()(CStringHelper::ToLower(path)));
}

unsigned long long ParseSize(const std::wstring& text) {
  wchar_t* unit = nullptr;
  const unsigned long long count = std::wcstoull(text.c_str(), &unit, 10);
  const std::wstring name = log4cplus::helpers::toUpper(unit);
  if (count == 0) return kDefaultMaxFileSize;
  return name == L"MB" ? count * 1024 * 1024 : name == L"KB" ? count * 1024 : count;
}

// 0 if there is no such file.
unsigned long long FileSize(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(SystemPath(path).c_str(), GetFileExInfoStandard, &data)) return 0;
  return static_cast<unsigned long long>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

void Rename(const std::wstring& from, const std::wstring& to) {
  MoveFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(), MOVEFILE_REPLACE_EXISTING);
}

// Lines end with CR LF, as usual on this system.
std::string WithSystemLineEnds(const std::string& text) {
  std::string result;
  result.reserve(text.size() + 1);
  for (const char c : text) {
    if (c == '\n' && !result.ends_with('\r')) result += '\r';
    result += c;
  }
  return result;
}

// @return ERROR_SUCCESS, or why the bytes could not be written.
DWORD AppendTo(const std::wstring& path, const std::string& bytes) {
  const UniqueHandle file = Open(path, FILE_APPEND_DATA, OPEN_ALWAYS);
  if (!file) return GetLastError();
  DWORD written = 0;
  const BOOL is_written =
      WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  return is_written ? ERROR_SUCCESS : GetLastError();
}
}  // namespace

SharedFileAppender::SharedFileAppender(const log4cplus::helpers::Properties& properties)
    : Appender(properties),
      m_file(properties.getProperty(L"File")),
      m_maxFileSize(ParseSize(properties.getProperty(L"MaxFileSize"))),
      m_mutex(CreateMutexW(nullptr, FALSE, MutexName(m_file).c_str())) {
  properties.getUInt(m_maxBackupIndex, L"MaxBackupIndex");
}

void SharedFileAppender::append(const log4cplus::spi::InternalLoggingEvent& event) {
  const std::wstring text = formatEvent(event);
  const DWORD error = Write(WithSystemLineEnds(CStringHelper::UnicodeToUTF8(text)));
  if (error != ERROR_SUCCESS) WriteToDebugger(text, error);
  m_lastError = error;
}

// @return ERROR_SUCCESS, or why the line could not be written.
DWORD SharedFileAppender::Write(const std::string& line) const {
  const FileLock lock(m_mutex.get());
  if (lock.IsHeld() && ExceedsMaximumWith(line.size())) Roll();
  const DWORD error = AppendTo(m_file, line);
  if (error == ERROR_SUCCESS) return error;
  std::wstring folder, file_name;
  CFilePathHelper::SplitFilePath(m_file, folder, file_name);
  return CFileHelper::CreateFolder(folder, false) ? AppendTo(m_file, line) : error;
}

// The reason comes once, before the first event that it concerns.
void SharedFileAppender::WriteToDebugger(const std::wstring& text, DWORD error) {
  if (error != m_lastError) {
    const std::wstring reason = L"the log file " + m_file + L" cannot be written: " + SystemText(error) +
                                L" (" + std::to_wstring(error) + L"); events go to the debugger\n";
    OutputDebugStringW(reason.c_str());
  }
  OutputDebugStringW(text.c_str());
}

bool SharedFileAppender::ExceedsMaximumWith(std::size_t added) const {
  const unsigned long long size = FileSize(m_file);
  return size > 0 && size + added > m_maxFileSize;
}

void SharedFileAppender::Roll() const {
  // If another program has opened the file without allowing a rename, the old files must stay, too.
  if (!Open(m_file, DELETE, OPEN_EXISTING)) return;

  for (unsigned number = m_maxBackupIndex; number > 1; --number) Rename(OldFile(number - 1), OldFile(number));
  if (m_maxBackupIndex > 0) {
    Rename(m_file, OldFile(1));
  } else {
    DeleteFileW(SystemPath(m_file).c_str());
  }
}

void RegisterSharedFileAppender() {
  using Factory = log4cplus::spi::FactoryTempl<SharedFileAppender, log4cplus::spi::AppenderFactory>;
  auto& registry = log4cplus::spi::getAppenderFactoryRegistry();
  if (!registry.exists(kSharedFileAppenderName)) {
    registry.put(std::make_unique<Factory>(kSharedFileAppenderName));
  }
}
