#include "errors/caught_exception.h"

#include <comdef.h>

#include <exception>
#include <new>

#include "CComBSTR.h"
#include "CStringHelper.h"
#include "CZALCIHandlerContextHelper.h"
#include "CZALException.h"
#include "base/com_pointers.h"

namespace {

CaughtException Describe(const _com_error& error) {
  // The description in the error object is more specific than the system's text for the code. It is not read
  // by error.Description(), which leaks it if memory runs out.
  const IErrorInfoPtr information(error.ErrorInfo(), false);
  CComBSTR description;
  if (information) information->GetDescription(&description);
  if (!description.View().empty()) return {error.Error(), std::wstring(description.View())};
  return {error.Error(), CZALCIHandlerContextHelper::Instance().GetErrorMsg(error.Error()).text};
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
