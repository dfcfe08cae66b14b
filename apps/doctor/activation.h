/// @file Creating an object through COM, in a process of its own: code of a DLL that crashes or hangs must
/// not end this program.
#pragma once

#include <windows.h>

#include <chrono>
#include <string>

namespace doctor {

/// The option with which this program creates an object and ends.
inline constexpr wchar_t kCreateOption[] = L"--create";

enum class ActivationEnd {
  kCreated,
  kRefused,  ///< COM answered with an error
  kCrashed,  ///< the process ended before the object was created, or when it was let go
  kHung,
  kNotStarted,  ///< the process could not be started
};

struct Activation {
  ActivationEnd end;
  long code;  ///< of kRefused: the HRESULT; of kCrashed: the exit code; of kNotStarted: the system's code
};

/// Creates an object of the class `id` in a new process of `program`, this program.
Activation CreateInOwnProcess(const std::wstring& program, REFCLSID id, std::chrono::milliseconds timeout);

/// What that process does: creates an object of the class `id`, prints the result, and lets the object go.
/// @return the process's exit code.
int CreateAndPrint(const std::wstring& id);

}  // namespace doctor
