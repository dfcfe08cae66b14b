#include "connection_failure.h"

#include <comdef.h>
#include <oleauto.h>

#include "CComBSTR.h"
#include "base/com_pointers.h"

void RaiseFailure(HRESULT code, const std::wstring& reason) {
  ICreateErrorInfoPtr description;
  IErrorInfo* error = nullptr;
  if (SUCCEEDED(CreateErrorInfo(&description))) {
    description->SetDescription(CComBSTR(reason));
    description->QueryInterface(IID_PPV_ARGS(&error));
  }
  throw _com_error(code, error);  // takes over the error object
}
