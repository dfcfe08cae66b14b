// Opens, inserts or replaces the files that the user chose in a panel of the PLM client.
#include "module/module_state.h"
#include "plm_commands.h"
#include "solidworks_add_in.h"

namespace {

// Members of an answer: each is the list of files for one action.
constexpr const wchar_t* kOpenFile = L"OpenFile";
constexpr const wchar_t* kInsertFile = L"InsertFile";
constexpr const wchar_t* kReplaceFileByCovering = L"ReplaceFileByCovering";
constexpr const wchar_t* kReplaceFile = L"ReplaceFile";

}  // namespace

STDMETHODIMP CSolidWorksAddIn::OpenDataSelector() {
  const ModuleState state;
  ApplyFileSelection(plm_command::kDataSelector);
  return S_OK;
}

STDMETHODIMP CSolidWorksAddIn::PlmQuery() {
  const ModuleState state;
  ApplyFileSelection(plm_command::kQuery);
  return S_OK;
}

STDMETHODIMP CSolidWorksAddIn::PlmMyCheckOutList() {
  const ModuleState state;
  OpenFiles(*SendCommand(plm_command::kMyCheckOutList).object);
  return S_OK;
}

STDMETHODIMP CSolidWorksAddIn::PlmTaskManage() {
  const ModuleState state;
  OpenFiles(*SendCommand(plm_command::kTaskManage, LoginText()).object);
  return S_OK;
}

/// Sends `command` with the login's text and handles the files in the answer. The order of the actions is
/// fixed and does not depend on the order of the members. A file that fails does not stop the next one.
void CSolidWorksAddIn::ApplyFileSelection(const wchar_t* command) {
  const std::shared_ptr<CJsonObject> selection = SendCommand(command, LoginText()).object;
  OpenFiles(*selection);
  for (const auto& path : selection->GetPropertyStringArrayValue(kInsertFile).second) InsertChildFile(path);
  for (const auto& path : selection->GetPropertyStringArrayValue(kReplaceFileByCovering).second) {
    ReplaceCurrentFileByCovering(path);
  }
  for (const auto& path : selection->GetPropertyStringArrayValue(kReplaceFile).second) {
    ReplaceCurrentFile(path);
  }
}

void CSolidWorksAddIn::OpenFiles(const CJsonObject& selection) {
  for (const auto& path : selection.GetPropertyStringArrayValue(kOpenFile).second) OpenFilePath(path);
}
