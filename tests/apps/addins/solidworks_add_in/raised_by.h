/// @file The exceptions that leave the add-in's methods.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>

#include "CZALException.h"

/// The code of the COM error or platform exception that `call` throws; S_OK if it throws none.
template <class Call>
HRESULT RaisedBy(Call&& call) {
  try {
    call();
  } catch (const _com_error& error) {
    return error.Error();
  } catch (const CZALException& exception) {
    return exception.GetErrorCode();
  }
  return S_OK;
}
