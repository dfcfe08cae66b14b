/// @file How IDispatch::Invoke reports that a method failed.
#pragma once

#include <windows.h>

#include <oaidl.h>

/// For a method that returned a failure: writes only the code into `information`, which may be null, like the
/// system's own dispatch of a dual interface. @return DISP_E_EXCEPTION.
HRESULT ReturnFailure(HRESULT code, EXCEPINFO* information) noexcept;

/// For a method that threw: logs the exception being handled and writes its code, text and source into
/// `information`, which may be null. Call it in a catch block only. @return DISP_E_EXCEPTION.
HRESULT ReturnException(const wchar_t* interface_name, const wchar_t* method,
                        EXCEPINFO* information) noexcept;
