#include "exception_info.h"

#include <oleauto.h>

#include <string>

#include "base/hex_code.h"
#include "com_boundary.h"
#include "errors/caught_exception.h"
#include "log/platform_log.h"
#include "log_set_up.h"

HRESULT ReturnFailure(HRESULT code, EXCEPINFO* information) noexcept {
  if (information) {
    *information = {};
    information->scode = code;
  }
  return DISP_E_EXCEPTION;
}

HRESULT ReturnException(const wchar_t* interface_name, const wchar_t* method,
                        EXCEPINFO* information) noexcept {
  ReturnFailure(CodeOfEscapedException(), information);
  try {
    const CaughtException caught = CaughtException::Describe();
    if (information) {
      information->bstrSource = SysAllocString(L"solidworks_add_in");
      information->bstrDescription = SysAllocString(caught.text.c_str());
    }
    InitialiseLog();  // the host may call before it connects the add-in
    LogPlatformError(std::wstring(interface_name) + L"::" + method + L" raised " + HexCode(caught.code) +
                     L": " + caught.text);
  } catch (...) {  // no memory for the text: the code must do
  }
  return DISP_E_EXCEPTION;
}
