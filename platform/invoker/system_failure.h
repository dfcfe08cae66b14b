/// @file Failed system calls as NoAnswer exceptions.
#pragma once

#include <windows.h>

#include <string>

#include "base/system_text.h"
#include "no_answer.h"

namespace invoker {

/// The reason `what`, followed by the system's text, if it has one, and code:
/// "...: Access denied. (error 5)".
inline NoAnswer SystemFailure(const std::wstring& what, DWORD code = GetLastError()) {
  const std::wstring text = SystemText(code);
  return {what + (text.empty() ? L"" : L": " + text) + L" (error " + std::to_wstring(code) + L")"};
}

/// The reason for a call on the pipe that failed with `code`, usually because the client has closed it.
inline NoAnswer PipeFailure(const std::wstring& what, DWORD code = GetLastError()) {
  if (code == ERROR_BROKEN_PIPE || code == ERROR_NO_DATA || code == ERROR_PIPE_NOT_CONNECTED) {
    return {L"the client has closed the connection"};
  }
  return SystemFailure(what, code);
}

}  // namespace invoker
