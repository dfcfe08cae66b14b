// Reads the custom properties of a document into a flat JSON object. Only document-level properties: the
// property manager is always the one for the empty configuration name.
#include "CCADStringHelper.h"
#include "CStringHelper.h"
#include "CVariantHelper.h"
#include "active_properties.h"
#include "diagnostics/diagnostics.h"
#include "solidworks_add_in.h"

HRESULT CSolidWorksAddIn::GetAttributes(const std::shared_ptr<CJsonObject>& json) {
  namespace site = log_site::get_attributes;
  ActiveProperties properties;
  const HRESULT result = ListActiveProperties(
      iSwApp, {site::kActiveDocument, site::kExtension, site::kManager, site::kGetAll}, properties);
  if (FAILED(result) || !properties.manager) return result;
  for (const CComBSTR& name : properties.names) {
    CComBSTR value;
    CComBSTR resolved;
    const HRESULT read = properties.manager->Get2(name, &value, &resolved);
    if (FAILED(read)) {
      LogFailure(site::kGet, read);
      return read;
    }
    json->SetStringValue(name.View(), value.View());
  }
  return S_OK;
}

HRESULT CSolidWorksAddIn::GetCustomProperty(const IModelDoc2Ptr& document,
                                            const std::shared_ptr<CJsonObject>& json) {
  namespace site = log_site::get_custom_property;
  const auto fail = [](const LogSite& at, HRESULT code) { return LogFailure(at, code), code; };
  IModelDocExtensionPtr extension;
  HRESULT result = document->get_Extension(&extension);
  if (FAILED(result)) return fail(site::kExtension, result);
  if (!extension) return S_OK;
  ICustomPropertyManagerPtr manager;
  result = extension->get_CustomPropertyManager(CComBSTR(L""), &manager);
  if (FAILED(result)) return fail(site::kManager, result);
  if (!manager) return S_OK;
  _variant_t names;
  result = manager->GetNames(&names);
  if (FAILED(result)) return fail(site::kGetNames, result);
  std::vector<CComBSTR> list;
  result = CVariantHelper::Var2StringList(names, list);
  if (FAILED(result)) return fail(site::kNameList, result);
  for (const CComBSTR& name : list) {
    CComBSTR value;
    CComBSTR resolved;
    VARIANT_BOOL was_resolved = VARIANT_FALSE;
    result = manager->Get3(name, VARIANT_TRUE, &value, &resolved, &was_resolved);
    if (FAILED(result)) {
      LogFailure(
          site::kGet, result,
          CCADStringHelper::CComBSTR2WString(name));  // one unreadable property does not stop the others
    } else {
      json->SetStringValue(name.View(), resolved.View());
    }
  }
  return result;
}
