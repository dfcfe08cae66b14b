#include "late_binding.h"

#include <comdef.h>

#include <string>

#include "files/paths.h"

namespace cad_host {

HRESULT FindLate(const Services& services, const LateMethod& method, LPOLESTR* names, UINT count,
                 DISPID* ids) {
  if (services.quirks.IsOn(Quirk::kCallerArrays)) return E_NOTIMPL;
  if (!names || !ids || count == 0) return E_POINTER;
  const bool known = count == 1 && SameName(names[0], method.name);
  *ids = known ? method.id : DISPID_UNKNOWN;
  return known ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT CheckLate(const Services& services, const LateMethod& method, DISPID id,
                  const DISPPARAMS* parameters) {
  if (services.quirks.IsOn(Quirk::kCallerArrays)) return E_NOTIMPL;
  if (!parameters) return E_POINTER;
  if (id != method.id) return DISP_E_MEMBERNOTFOUND;
  return parameters->cArgs == method.arguments ? S_OK : DISP_E_BADPARAMCOUNT;
}

long LateNumber(const DISPPARAMS& parameters, UINT index) {
  _variant_t number(parameters.rgvarg[parameters.cArgs - 1 - index]);
  if (FAILED(VariantChangeType(&number, &number, 0, VT_I4))) throw _com_error(DISP_E_TYPEMISMATCH);
  return number.lVal;
}

}  // namespace cad_host
