#include "exception_info.h"

#include <oleauto.h>

#include <string>

#include "base/hex_code.h"
#include "errors/caught_exception.h"
#include "log/platform_log.h"
#include "log_set_up.h"

HRESULT AnswerFailure(HRESULT code, EXCEPINFO* information) noexcept {
  if (information) {
    *information = {};
    information->scode = code;
  }
  return DISP_E_EXCEPTION;
}

HRESULT AnswerException(const wchar_t* interface_name, const wchar_t* method,
                        EXCEPINFO* information) noexcept {
  try {
    const CaughtException caught = CaughtException::Describe();
    AnswerFailure(caught.code, information);
    if (information) {
      information->bstrSource = SysAllocString(L"solidworks_add_in");
      information->bstrDescription = SysAllocString(caught.text.c_str());
    }
    InitialiseLog();  // the host may call before it connects
    LogPlatformError(std::wstring(interface_name) + L"::" + method + L" raised " + HexCode(caught.code) +
                     L": " + caught.text);
  } catch (...) {
    // No memory even for the text.
    AnswerFailure(E_OUTOFMEMORY, information);
  }
  return DISP_E_EXCEPTION;
}
