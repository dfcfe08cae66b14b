#include "active_properties.h"

#include "CVariantHelper.h"
#include "diagnostics/diagnostics.h"
#include "host/model_doc.h"

HRESULT ListActiveProperties(const ISldWorksPtr& application, const ActivePropertySites& sites,
                             ActiveProperties& properties) {
  const auto fail = [](const LogSite& at, HRESULT code) { return LogFailure(at, code), code; };
  IModelDoc2Ptr document;
  HRESULT result = application->get_IActiveDoc2(&document);
  if (FAILED(result)) return fail(sites.document, result);
  if (!document) return S_OK;
  IModelDocExtensionPtr extension;
  result = document->get_Extension(&extension);
  if (FAILED(result)) return fail(sites.extension, result);
  ICustomPropertyManagerPtr manager;
  result = extension->get_CustomPropertyManager(CComBSTR(L""), &manager);
  if (FAILED(result)) return fail(sites.manager, result);
  _variant_t names;
  _variant_t types;
  _variant_t values;
  long count = 0;
  result = manager->GetAll(&names, &types, &values, &count);
  if (FAILED(result)) return fail(sites.list, result);
  properties.manager = manager;
  if (names.vt != (VT_ARRAY | VT_BSTR) || count <= 0) return S_OK;
  result = CVariantHelper::Var2StringList(names, properties.names);
  if (result == E_OUTOFMEMORY) _com_issue_error(result);
  // Use the smaller number: hosts may return fewer names than they count.
  if (properties.names.size() > static_cast<std::size_t>(count)) properties.names.resize(count);
  return S_OK;
}
