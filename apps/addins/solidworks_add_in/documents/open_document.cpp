// Opens a file in the host; finds the path of the active document's file.
#include <shlwapi.h>

#include "CStringHelper.h"
#include "base/com_pointers.h"
#include "base/system_path.h"
#include "diagnostics/diagnostics.h"
#include "document_type.h"
#include "open_silently.h"
#include "solidworks_add_in.h"

bool CSolidWorksAddIn::OpenFilePath(const std::wstring& path) {
  const CComBSTR name = CStringHelper::String2CComBSTR(path);
  IModelDoc2Ptr document;
  const HRESULT result = OpenSilently(iSwApp, name, GetDocumentType(path), CComBSTR(L""), document);
  if (FAILED(result) || !document) {
    ReportFailedOpen(log_site::open::kOpenDoc, path, result);
    return false;
  }
  IDispatchPtr activated;
  iSwApp->ActivateDoc(name, &activated);
  return true;
}

bool CSolidWorksAddIn::GetCurrentFilePath(std::wstring& path) {
  IModelDoc2Ptr document;
  iSwApp->get_IActiveDoc2(&document);
  if (!document) return false;
  VARIANT_BOOL view_only = VARIANT_FALSE;
  if (document->IsOpenedViewOnly(&view_only) != S_OK || view_only != VARIANT_FALSE) return false;
  CComBSTR name;
  if (FAILED(document->GetPathName(&name))) return false;
  const std::wstring found = CStringHelper::CComBSTR2WString(name);
  if (!PathFileExistsW(SystemPath(found).c_str())) return false;
  path = found;
  return true;
}
