// Commands that open a panel of the PLM client, which does all the work: the answer is ignored.
#include "module/module_state.h"
#include "plm_commands.h"
#include "solidworks_add_in.h"

STDMETHODIMP CSolidWorksAddIn::PlmWf() {
  const ModuleState state;
  SendCommand(plm_command::kStartWorkflow, LoginText());
  return S_OK;
}

STDMETHODIMP CSolidWorksAddIn::PlmCode() {
  const ModuleState state;
  SendCommand(plm_command::kGetCode, LoginText());
  return S_OK;
}

STDMETHODIMP CSolidWorksAddIn::PlmMyTempMaterial() {
  const ModuleState state;
  SendCommand(plm_command::kMyTempMaterial);
  return S_OK;
}
