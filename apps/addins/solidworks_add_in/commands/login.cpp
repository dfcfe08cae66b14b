// Login and logout, and what they leave behind.
#include "diagnostics/diagnostics.h"
#include "module/module_state.h"
#include "module/string_table.h"
#include "plm_commands.h"
#include "resources/resource_ids.h"
#include "solidworks_add_in.h"

STDMETHODIMP CSolidWorksAddIn::PlmLogin() {
  const ModuleState state;
  const std::wstring answer = SendCommand(plm_command::kLogin);
  // Loaded on every login, shown on none: the PLM client tells the user itself.
  [[maybe_unused]] const std::wstring failed = LoadResourceString(IDS_LOGIN_FAILED);
  if (answer.empty()) {
    LogFailure(log_site::login::kEmptyAnswer, platform_code::kNoAnswer);
    return platform_code::kNoAnswer;
  }
  if (!AnswerTellsSuccess(answer)) {
    LogFailure(log_site::login::kFailed, E_FAIL);
    return E_FAIL;
  }
  m_loggedIn = true;
  m_loginResult = std::make_shared<CJsonObject>();
  m_loginResult->CreateFrom(answer);
  return S_OK;
}

STDMETHODIMP CSolidWorksAddIn::PlmLogOut() {
  const ModuleState state;
  if (AnswerTellsSuccess(SendCommand(plm_command::kLogout))) {
    // Login writes without the lock, logout under it: a waiter sleeps until the user is out.
    const std::lock_guard lock(m_loginMutex);
    DropLoginResult();
    m_loggedIn = false;
    m_loginChanged.notify_all();
  }
  return S_OK;
}

void CSolidWorksAddIn::DropLoginResult() {
  if (!m_loginResult || m_loginResult.use_count() != 1) {
    // Others hold the old object, which stays theirs as it is: let go of a copy instead.
    auto detached = std::make_shared<CJsonObject>();
    if (m_loginResult) detached->CopyFrom(*m_loginResult);
    m_loginResult = std::move(detached);
  }
  m_loginResult.reset();
}
