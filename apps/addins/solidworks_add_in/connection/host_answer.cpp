#include "host_answer.h"

#include <comdef.h>
#include <oleauto.h>

#include <string>

#include "CComBSTR.h"
#include "base/com_pointers.h"

void RaiseNoAnswer(const wchar_t* call) {
  ICreateErrorInfoPtr description;
  IErrorInfo* error = nullptr;
  if (SUCCEEDED(CreateErrorInfo(&description))) {
    const CComBSTR text(call + std::wstring(L" returned nothing"));
    description->SetDescription(text);
    description->QueryInterface(IID_PPV_ARGS(&error));
  }
  throw _com_error(E_POINTER, error);  // takes over the error object
}
