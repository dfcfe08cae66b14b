/// @file Where the exceptions of the DLL end.
///
/// The host is built with another compiler, which cannot catch what is thrown here: an exception that reaches
/// it ends or hangs it. So everything that the host, the system or a library can call ends exceptions, by the
/// functions of this file if it has nothing to add: IDispatch::Invoke answers with code and text, and what
/// the system calls on the way of such a call keeps the exception until that returns.
#pragma once

#include <windows.h>

#include <utility>

/// Logs the exception that is being handled, with the method that it left, in one line under "platform".
/// Call it in a catch block only.
/// @return its code as a failing HRESULT: E_OUTOFMEMORY if memory ran out, E_UNEXPECTED if its code is not
///         that of a failure.
HRESULT LogEscapedException(const wchar_t* method) noexcept;

/// The same without a line in the log, for a method that has logged the exception itself.
HRESULT CodeOfEscapedException() noexcept;

/// Makes what the runtime needs for the exceptions of this thread. Otherwise it makes that at the first
/// exception, and ends the process if there is no memory for it, as is likely if the exception says just
/// that.
/// @return false if there is no memory.
bool PrepareForExceptions() noexcept;

/// Runs `call`, which returns an HRESULT, as the method `method`.
/// @return its result; the code of an exception, after a line in the log.
template <class Call>
HRESULT EndExceptions(const wchar_t* method, Call&& call) noexcept {
  try {
    return std::forward<Call>(call)();
  } catch (...) {
    return LogEscapedException(method);
  }
}
