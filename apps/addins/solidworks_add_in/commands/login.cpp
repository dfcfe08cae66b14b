// Login and logout, and the login's result.
#include <chrono>

#include "diagnostics/diagnostics.h"
#include "module/module_state.h"
#include "module/string_table.h"
#include "plm_commands.h"
#include "resources/resource_ids.h"
#include "solidworks_add_in.h"

namespace {

constexpr std::chrono::seconds kLastLogoutTimeout{10};

}  // namespace

STDMETHODIMP CSolidWorksAddIn::PlmLogin() {
  const ModuleState state;
  const PlmAnswer answer = SendCommand(plm_command::kLogin);
  // Loaded but never shown: the PLM client itself shows the user why a login failed.
  [[maybe_unused]] const std::wstring failed = LoadResourceString(IDS_LOGIN_FAILED);
  if (answer.text.empty()) {
    LogFailure(log_site::login::kEmptyAnswer, platform_code::kNoAnswer);
    return platform_code::kNoAnswer;
  }
  if (!answer.ReportsSuccess()) {
    LogFailure(log_site::login::kFailed, E_FAIL);
    return E_FAIL;
  }
  m_loggedIn = true;
  m_loginResult = answer.object;
  return S_OK;
}

STDMETHODIMP CSolidWorksAddIn::PlmLogOut() {
  LogOut({.starts_client = false});
  return S_OK;
}

/// The host is ending or unloads the add-in: it must not wait for a client that does not answer.
void CSolidWorksAddIn::LogOutBeforeDisconnect() {
  LogOut({.starts_client = false, .shows_box = false, .timeout = kLastLogoutTimeout});
}

void CSolidWorksAddIn::LogOut(const CZALCommandOptions& options) {
  const ModuleState state;
  if (SendCommand(plm_command::kLogout, {}, options).ReportsSuccess()) {
    // Only logout takes the lock: waiters wait for the logout.
    const std::lock_guard lock(m_loginMutex);
    DropLoginResult();
    m_loggedIn = false;
    m_loginChanged.notify_all();
  }
}

void CSolidWorksAddIn::DropLoginResult() {
  if (!m_loginResult || m_loginResult.use_count() != 1) {
    // Other owners keep the old object unchanged: release a copy instead.
    auto detached = std::make_shared<CJsonObject>();
    if (m_loginResult) detached->CopyFrom(*m_loginResult);
    m_loginResult = std::move(detached);
  }
  m_loginResult.reset();
}
