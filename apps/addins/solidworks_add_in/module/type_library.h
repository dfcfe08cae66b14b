/// @file The type library inside the DLL.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace type_library {

/// The description of the interface `iid`.
/// @return the result of loading the library; `*info` is null after a failure.
HRESULT GetInterfaceInfo(REFIID iid, ITypeInfo** info) noexcept;

/// IDispatch::GetTypeInfoCount of an object with one described interface.
HRESULT CountInterfaceInfo(UINT* count) noexcept;

/// Registers the library, with the DLL as its file, for the whole machine.
HRESULT Register() noexcept;

/// Removes the registration. @return S_OK also if the library is not registered.
HRESULT Unregister() noexcept;

}  // namespace type_library
