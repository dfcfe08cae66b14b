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
    return FailingCode(caught.code);
  } catch (...) {  // no memory even for the text
    return E_OUTOFMEMORY;
  }
}

HRESULT CodeOfEscapedException() noexcept {
  try {
    return FailingCode(CaughtException::Describe().code);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}
