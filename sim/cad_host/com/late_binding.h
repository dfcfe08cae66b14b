/// @file Calls by name of the methods that write into an array of the caller. A host serves them only while
/// Quirk::kCallerArrays is off.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include "services.h"

namespace cad_host {

/// The one method of an object that can be called by name.
struct LateMethod {
  const wchar_t* name;
  DISPID id;
  UINT arguments;
};

/// For IDispatch::GetIDsOfNames.
/// @return E_NOTIMPL while no method can be called by name; DISP_E_UNKNOWNNAME for another name.
HRESULT FindLate(const Services& services, const LateMethod& method, LPOLESTR* names, UINT count,
                 DISPID* ids);

/// For IDispatch::Invoke, before the call.
/// @return S_OK if the method is meant and has its number of arguments; otherwise what Invoke returns.
HRESULT CheckLate(const Services& services, const LateMethod& method, DISPID id,
                  const DISPPARAMS* parameters);

/// The argument `index`, counted from 0 in the order of the declaration.
/// @throws _com_error DISP_E_TYPEMISMATCH if it is not a number.
long LateNumber(const DISPPARAMS& parameters, UINT index);

}  // namespace cad_host
