/// @file What the host answers while the add-in connects.
#pragma once

/// Raises E_POINTER, with a text that names the host call that returned nothing.
[[noreturn]] void RaiseNoAnswer(const wchar_t* call);

/// The object that the host call `call` returned, for the next step.
/// @throws _com_error E_POINTER that names the call if there is no object. Hosts are not asked whether a call
///         succeeded: what counts is whether the next step has what it needs.
template <class Pointer>
const Pointer& Need(const Pointer& pointer, const wchar_t* call) {
  if (!pointer) RaiseNoAnswer(call);
  return pointer;
}
