#include "plm_commands.h"

#include "solidworks_add_in.h"

bool ReportsSuccess(const std::wstring& answer) {
  CJsonObject result;
  result.CreateFrom(answer);
  return result.GetPropertyBoolValue(L"__InvokeResult__").second;
}

/// Sends `command` through the invoker. @throws _com_error E_POINTER before the first connection.
std::wstring CSolidWorksAddIn::SendCommand(const wchar_t* command, std::wstring request) {
  if (!m_invok) _com_issue_error(E_POINTER);
  // While the command waits, the host may connect the add-in again, which replaces the invoker.
  const std::shared_ptr<CZALCmdInvoker> invoker = m_invok;
  return invoker->Invoke(command, std::move(request));
}

/// The PLM client's answer to the login, as JSON text. @throws _com_error E_POINTER while logged out.
std::wstring CSolidWorksAddIn::LoginText() const {
  if (!m_loginResult) _com_issue_error(E_POINTER);
  return m_loginResult->ToJson();
}
