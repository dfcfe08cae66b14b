// Connecting to the host and disconnecting from it.
#include <cstdlib>
#include <source_location>

#include "CComBSTR.h"
#include "CStringHelper.h"
#include "CZALException.h"
#include "connection_failure.h"
#include "diagnostics/diagnostics.h"
#include "errors/caught_exception.h"
#include "log/platform_log.h"
#include "module/com_module.h"
#include "module/log_set_up.h"
#include "solidworks_add_in.h"

_COM_SMARTPTR_TYPEDEF(ISolidWorksAddIn, __uuidof(ISolidWorksAddIn));

namespace {

// The command group that command_interface.cpp builds, and a flyout group that is never built. The add-in
// asks the host to remove both.
constexpr long kCommandGroup = 0;
constexpr long kFlyoutGroup = 99;

// The largest number of bytes for one UTF-16 unit in any ANSI code page.
constexpr std::size_t kLongestCharacter = 4;

/// The leading integer of a revision number such as "31.2.0"; 0 if there is none.
long MajorVersion(const CComBSTR& revision) {
  const std::wstring_view text = revision.View();
  std::string narrow(kLongestCharacter * text.size(), '\0');
  WideCharToMultiByte(CP_THREAD_ACP, 0, text.data(), static_cast<int>(text.size()), narrow.data(),
                      static_cast<int>(narrow.size()), nullptr, nullptr);
  return std::strtol(narrow.c_str(), nullptr, 10);
}

/// The host takes the module's handle as a long, so only its low half is passed, as with every add-in.
long ModuleHandle() {
  return static_cast<long>(reinterpret_cast<LONG_PTR>(CSolidWorksAddInModule::Instance().ModuleHandle()));
}

/// Logs the exception being handled.
void LogFailedConnection(std::source_location place = std::source_location::current()) noexcept {
  InitialiseLog();  // the failure may have happened before the log was started
  try {
    const CaughtException caught = CaughtException::Describe();
    LogPlatformError(L"connecting to the host failed: " + caught.text + CodeSuffix(caught.code), place);
  } catch (...) {  // no memory for the line; what failed goes its way all the same
  }
}

}  // namespace

STDMETHODIMP CSolidWorksAddIn::ConnectToSW(IDispatch* ThisSW, long Cookie, VARIANT_BOOL* IsConnected) {
  try {
    Connect(ThisSW, Cookie);
  } catch (const CZALException&) {  // already logged with the file's name
    throw;
  } catch (...) {
    LogFailedConnection();
    throw;
  }
  if (IsConnected) *IsConnected = VARIANT_TRUE;
  return S_OK;
}

void CSolidWorksAddIn::Connect(IDispatch* host, long cookie) {
  iSwApp = nullptr;
  if (host) host->QueryInterface(IID_PPV_ARGS(&iSwApp));
  m_cookie = cookie;
  m_commandManager = nullptr;
  Need(iSwApp, L"QueryInterface for ISldWorks")->GetCommandManager(m_cookie, &m_commandManager);
  VARIANT_BOOL accepted = VARIANT_FALSE;
  // The host gets the guard of the interface, as by every query.
  ISolidWorksAddInPtr callbacks;
  static_cast<ISwAddin*>(this)->QueryInterface(IID_PPV_ARGS(&callbacks));
  iSwApp->SetAddinCallbackInfo(ModuleHandle(), callbacks, m_cookie, &accepted);
  CComBSTR revision;
  iSwApp->RevisionNumber(&revision);
  m_hostMajorVersion = MajorVersion(revision);
  m_hostMinorVersion = 0;
  const std::wstring view_file = BuildCommandInterface();
  m_eventAdvice.Advise(iSwApp, m_hostMajorVersion);
  LogPlatformInformation(L"connected to the host of revision \"" + CStringHelper::CComBSTR2WString(revision) +
                         L"\", menu from " + view_file);
}

STDMETHODIMP CSolidWorksAddIn::DisconnectFromSW(VARIANT_BOOL* IsDisconnected) {
  if (m_bitmapHandler) m_bitmapHandler->Dispose();
  m_bitmapHandler = nullptr;
  if (m_commandManager) {
    VARIANT_BOOL removed = VARIANT_FALSE;
    m_commandManager->RemoveFlyoutGroup(kFlyoutGroup, &removed);
    m_commandManager->RemoveCommandGroup(kCommandGroup, &removed);
  }
  const HRESULT unadvised = m_eventAdvice.Unadvise(iSwApp);
  if (IsDisconnected) *IsDisconnected = unadvised == S_OK ? VARIANT_TRUE : VARIANT_FALSE;
  // Held until the logout has ended, however it ends. If the host connects anew meanwhile, that connection's
  // pointers stay.
  const ISldWorksPtr application(iSwApp.Detach(), false);
  const ICommandManagerPtr manager(m_commandManager.Detach(), false);  // released first
  if (m_loggedIn) LogOutBeforeDisconnect();
  return S_OK;
}
