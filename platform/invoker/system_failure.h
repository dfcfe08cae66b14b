/// @file Failed system calls as reasons for no answer.
#pragma once

#include <windows.h>

#include <string>

#include "no_answer.h"

namespace invoker {

/// "... (error 5)": the reason with the system's code.
inline NoAnswer SystemFailure(const std::wstring& what, DWORD code = GetLastError()) {
  return {what + L" (error " + std::to_wstring(code) + L")"};
}

/// A call on the pipe that failed with `code`, mostly because the client is gone.
inline NoAnswer PipeFailure(const std::wstring& what, DWORD code = GetLastError()) {
  if (code == ERROR_BROKEN_PIPE || code == ERROR_NO_DATA || code == ERROR_PIPE_NOT_CONNECTED) {
    return {L"the client has closed the connection"};
  }
  return SystemFailure(what, code);
}

}  // namespace invoker
