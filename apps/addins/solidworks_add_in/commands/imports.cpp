// Imports into the PLM system: the active document, or a lot of files.
#include "diagnostics/diagnostics.h"
#include "module/module_state.h"
#include "plm_commands.h"
#include "solidworks_add_in.h"

STDMETHODIMP CSolidWorksAddIn::PlmImportCurrent() {
  const ModuleState state;
  return ImportActiveDocument(plm_command::kImportCurrent, log_site::import::kCurrentFailed);
}

STDMETHODIMP CSolidWorksAddIn::PlmImportChangeItem() {
  const ModuleState state;
  return ImportActiveDocument(plm_command::kCreateChangeItems, log_site::import::kChangeItemFailed);
}

STDMETHODIMP CSolidWorksAddIn::PlmLotimport() {
  const ModuleState state;
  return SendImport(plm_command::kLotImport, {}, log_site::import::kLotFailed);
}

/// Sends the active document's path with `command`; does nothing if there is no such path.
HRESULT CSolidWorksAddIn::ImportActiveDocument(const wchar_t* command, const LogSite& failed) {
  RequireInvoker();
  std::wstring path;
  if (!GetCurrentFilePath(path)) return S_OK;
  CJsonObject request;
  request.SetStringValue(L"file_path", path);
  // Case-sensitive and anywhere in the path: the PLM client relies on both.
  if (path.rfind(L".slddrw") != std::wstring::npos) request.SetStringValue(L"Method", L"LotinputDrawing");
  return SendImport(command, request.ToJson(), failed);
}

HRESULT CSolidWorksAddIn::SendImport(const wchar_t* command, std::wstring request, const LogSite& failed) {
  if (SendCommand(command, std::move(request)).ReportsSuccess()) return S_OK;
  LogFailure(failed, E_FAIL);
  return E_FAIL;
}
