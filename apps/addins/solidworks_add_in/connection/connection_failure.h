/// @file What connecting needs, and the exceptions if it is not there.
#pragma once

#include <windows.h>

#include <string>

/// Raises a _com_error of this code with this text.
[[noreturn]] void RaiseFailure(HRESULT code, const std::wstring& reason);

/// The object that the host call `call` returned, for the next step.
/// @throws _com_error E_POINTER that names the call if there is no object. Hosts are not asked whether a call
///         succeeded: what counts is whether the next step has what it needs.
template <class Pointer>
const Pointer& Need(const Pointer& pointer, const wchar_t* call) {
  if (!pointer) RaiseFailure(E_POINTER, call + std::wstring(L" returned nothing"));
  return pointer;
}
