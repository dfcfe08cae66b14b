/// @file How IDispatch::Invoke tells that a method failed.
#pragma once

#include <windows.h>

#include <oaidl.h>

/// A failing result of the method: `information`, where given, gets the code alone, as from the system's
/// own dispatch of a dual interface. @return DISP_E_EXCEPTION.
HRESULT AnswerFailure(HRESULT code, EXCEPINFO* information) noexcept;

/// The exception being handled, which left the method; call it in a catch block only. It goes into the log,
/// and with code, text and source into `information`, where given. @return DISP_E_EXCEPTION.
HRESULT AnswerException(const wchar_t* interface_name, const wchar_t* method,
                        EXCEPINFO* information) noexcept;
