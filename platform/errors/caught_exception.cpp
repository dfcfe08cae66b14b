#include "errors/caught_exception.h"

#include <comdef.h>

#include <exception>
#include <new>

#include "CStringHelper.h"
#include "CZALException.h"

namespace {

CaughtException Describe(const _com_error& error) {
  // The description in the error object is more specific than the system's text for the code.
  const _bstr_t description = error.Description();
  return {error.Error(),
          description.length() ? static_cast<const wchar_t*>(description) : error.ErrorMessage()};
}

}  // namespace

CaughtException CaughtException::Describe() {
  try {
    throw;
  } catch (const _com_error& error) {
    return ::Describe(error);
  } catch (const CZALException& error) {
    return {error.GetErrorCode(), error.GetErrorMessage()};
  } catch (const std::bad_alloc&) {
    return {E_OUTOFMEMORY, L"out of memory"};
  } catch (const std::exception& error) {
    return {E_FAIL, CStringHelper::UTF8ToUnicode(error.what())};
  } catch (...) {
    return {E_FAIL, L"unknown exception"};
  }
}
