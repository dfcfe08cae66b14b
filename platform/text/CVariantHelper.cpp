#include "CVariantHelper.h"

#include <algorithm>

namespace {

/// The names in `array`, which holds BSTRs, in array order.
HRESULT ReadNames(SAFEARRAY* array, std::vector<CComBSTR>& list) {
  if (!array) return S_OK;
  if (SafeArrayGetDim(array) != 1) return DISP_E_TYPEMISMATCH;
  std::vector<CComBSTR> names(array->rgsabound[0].cElements);
  BSTR* elements = nullptr;
  const HRESULT result = SafeArrayAccessData(array, reinterpret_cast<void**>(&elements));
  if (FAILED(result)) return result;
  const bool copied = std::ranges::all_of(names, [&elements](CComBSTR& name) {
    BSTR element = *elements++;
    if (element) name.Attach(SysAllocStringLen(element, SysStringLen(element)));
    return !element || name;
  });
  SafeArrayUnaccessData(array);
  if (!copied) return E_OUTOFMEMORY;
  list = std::move(names);
  return S_OK;
}

}  // namespace

HRESULT CVariantHelper::Var2StringList(const VARIANT& variant, std::vector<CComBSTR>& list) {
  list.clear();
  switch (V_VT(&variant)) {
    case VT_EMPTY:
    case VT_NULL:
      return S_OK;
    case VT_ARRAY | VT_BSTR:
      return ReadNames(V_ARRAY(&variant), list);
    case VT_BYREF | VT_ARRAY | VT_BSTR:
      return ReadNames(*V_ARRAYREF(&variant), list);
    case VT_BYREF | VT_VARIANT:
      return Var2StringList(*V_VARIANTREF(&variant), list);
    default:
      return DISP_E_TYPEMISMATCH;
  }
}
