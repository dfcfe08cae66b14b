#include "com_boundary.h"

#include <string>

#include "base/hex_code.h"
#include "errors/caught_exception.h"
#include "log/platform_log.h"
#include "log_set_up.h"

namespace {

HRESULT FailingCode(HRESULT code) { return FAILED(code) ? code : E_UNEXPECTED; }

}  // namespace

HRESULT LogEscapedException(const wchar_t* method) noexcept {
  try {
    const CaughtException caught = CaughtException::Describe();
    InitialiseLog();  // the host may call before it connects
    LogPlatformError(std::wstring(method) + L" raised " + HexCode(caught.code) + L": " + caught.text);
  } catch (...) {  // no memory for the line: the code must do
  }
  return CodeOfEscapedException();
}

HRESULT CodeOfEscapedException() noexcept {
  try {
    return FailingCode(CaughtException::Describe().code);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}
