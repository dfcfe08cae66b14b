// Writes values into existing custom properties of the active document.
#include "CStringHelper.h"
#include "active_properties.h"
#include "diagnostics/diagnostics.h"
#include "resources/resource_ids.h"
#include "solidworks_add_in.h"

HRESULT CSolidWorksAddIn::PutAttributes(const std::shared_ptr<CJsonObject>& json) {
  namespace site = log_site::put_attributes;
  ActiveProperties properties;
  HRESULT result = ListActiveProperties(
      iSwApp, {site::kActiveDocument, site::kExtension, site::kManager, site::kGetAll}, properties);
  if (FAILED(result) || !properties.manager) return result;
  for (const CComBSTR& name : properties.names) {
    const std::optional<std::wstring> text = json->FindStringValue(name.View());
    if (!text) continue;
    long status = 0;
    result = properties.manager->Set(name, CStringHelper::String2CComBSTR(*text), &status);
    if (FAILED(result)) {
      LogFailure(site::kSet, result);
      return result;
    }
  }
  ShowCaptionedMessage(IDS_BACKFILL_COMPLETED, IDS_BACKFILL_PROPERTIES, MB_OK);
  return S_OK;
}
