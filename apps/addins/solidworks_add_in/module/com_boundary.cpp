#include "com_boundary.h"

#include <cstdlib>
#include <exception>
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

bool PrepareForExceptions() noexcept {
  // Far more than the runtime needs. The runtime's call has no way to fail, so the memory is tried before it.
  constexpr std::size_t kEnough = 4096;
  void* const tried = std::malloc(kEnough);
  if (!tried) return false;
  std::free(tried);
  return std::uncaught_exceptions() >= 0;  // always; to answer, the runtime makes what it needs
}
