#include "CVariantHelper.h"

namespace {

/// The names in `array`, which holds BSTRs, in array order.
HRESULT ReadNames(SAFEARRAY* array, std::vector<CComBSTR>& list) {
  if (!array) return S_OK;
  if (SafeArrayGetDim(array) != 1) return DISP_E_TYPEMISMATCH;
  const SAFEARRAYBOUND& bound = array->rgsabound[0];
  std::vector<CComBSTR> names(bound.cElements);
  for (ULONG i = 0; i < bound.cElements; ++i) {
    LONG index = bound.lLbound + static_cast<LONG>(i);
    const HRESULT result = SafeArrayGetElement(array, &index, &names[i]);
    if (FAILED(result)) return result;
  }
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
