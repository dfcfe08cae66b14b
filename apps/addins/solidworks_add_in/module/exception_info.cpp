#include "exception_info.h"

#include <oleauto.h>

#include <cwchar>
#include <iterator>
#include <string>

#include "PlatformLog.h"
#include "caught_exception.h"
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
    wchar_t code[9];
    swprintf(code, std::size(code), L"%08lx", static_cast<unsigned long>(caught.code));
    InitialiseLog();  // the host may call before it connects
    LogPlatformError(std::wstring(interface_name) + L"::" + method + L" raised 0x" + code + L": " +
                     caught.text);
  } catch (...) {
    // No memory even for the text.
    AnswerFailure(E_OUTOFMEMORY, information);
  }
  return DISP_E_EXCEPTION;
}
