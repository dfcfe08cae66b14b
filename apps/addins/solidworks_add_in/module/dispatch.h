/// @file The dispatch interface of the add-in object, through which the host calls methods by name.
#pragma once

#include <windows.h>

#include <string>

#include "solidworks_add_in_h.h"

/// IDispatch for ISolidWorksAddIn. The dispatch ids are those of the type library, 1 to 28.
namespace add_in_dispatch {

/// @return S_OK with 1, or E_POINTER.
HRESULT GetTypeInfoCount(UINT* count) noexcept;

/// The description of ISolidWorksAddIn from the type library in the DLL.
/// @return DISP_E_BADINDEX for another index than 0; E_POINTER.
HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) noexcept;

/// Finds the method `names[0]`, without regard to case.
/// @return S_OK; DISP_E_UNKNOWNNAME if a name is unknown, and its id is then DISPID_UNKNOWN (names of
///         arguments always are, because no method here takes named arguments); DISP_E_UNKNOWNINTERFACE if
///         `iid` is not IID_NULL; E_INVALIDARG without names.
HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) noexcept;

/// Whether `name` is, without regard to case, the name of a command or of an enable method.
bool IsCommand(const std::wstring& name) noexcept;
bool IsEnableMethod(const std::wstring& name) noexcept;

/// Calls the method `id` of `target`. A command takes no argument. An enable method writes its status into a
/// long passed by reference, or into `result` if no argument is passed.
/// @return S_OK; DISP_E_EXCEPTION if the method returned a failure or threw: `exception` contains the code
///         and, for a C++ exception, its text, which is also logged; DISP_E_MEMBERNOTFOUND for an unknown id
///         or flags without DISPATCH_METHOD; DISP_E_BADPARAMCOUNT, DISP_E_NONAMEDARGS; DISP_E_TYPEMISMATCH,
///         with the position in `bad_argument`; DISP_E_UNKNOWNINTERFACE if `iid` is not IID_NULL;
///         E_INVALIDARG without `parameters`.
HRESULT Invoke(ISolidWorksAddIn& target, DISPID id, REFIID iid, LCID locale, WORD flags,
               DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) noexcept;

}  // namespace add_in_dispatch
