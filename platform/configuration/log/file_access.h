/// @file Opening the files of appenders.
#pragma once

#include <windows.h>

#include <string>

#include "base/unique_handle.h"

/// Opens the file at `path` as an appender does. @return ERROR_SUCCESS, or why it cannot be opened.
inline DWORD OpenToAppend(const std::wstring& path, DWORD disposition) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const UniqueHandle file =
      OwnHandle(CreateFileW(path.c_str(), FILE_APPEND_DATA, kShareAll, nullptr, disposition, 0, nullptr));
  return file ? ERROR_SUCCESS : GetLastError();
}
