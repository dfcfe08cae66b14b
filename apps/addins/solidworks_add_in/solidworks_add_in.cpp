#include "solidworks_add_in.h"

#include "CDisplayErrorMsg.h"
#include "module/application.h"
#include "module/com_module.h"
#include "module/dispatch.h"

const char kAddInSourceFile[] = __FILE__;

namespace {

CSolidWorksAddInApp& App() { return CSolidWorksAddInApp::Instance(); }

}  // namespace

CSolidWorksAddIn::CSolidWorksAddIn() {
  CDisplayErrorMsg::SetCaptionSource([] { return App().Title(); });
  CDisplayErrorMsg::SetLabelSource([] { return App().ErrorBoxLabels(); });
  CZALCmdInvoker::SetBoxTexts([] { return App().ClientBoxTexts(); });
  CZALCmdInvoker::SetModuleLock([]() noexcept { CSolidWorksAddInModule::Instance().Lock(); },
                                []() noexcept { CSolidWorksAddInModule::Instance().Unlock(); });
}

CSolidWorksAddIn::~CSolidWorksAddIn() {
  // Before all other members: its final release deletes the icon files.
  m_bitmapHandler = nullptr;
}

STDMETHODIMP CSolidWorksAddIn::GetTypeInfoCount(UINT* count) {
  return add_in_dispatch::GetTypeInfoCount(count);
}

STDMETHODIMP CSolidWorksAddIn::GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) {
  return add_in_dispatch::GetTypeInfo(index, locale, info);
}

STDMETHODIMP CSolidWorksAddIn::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                             DISPID* ids) {
  return add_in_dispatch::GetIDsOfNames(iid, names, count, locale, ids);
}

STDMETHODIMP CSolidWorksAddIn::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                      VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) {
  // The host may release the add-in while a command waits.
  const IUnknownPtr self(static_cast<IUnknown*>(static_cast<ISolidWorksAddIn*>(this)));
  return add_in_dispatch::Invoke(*this, id, iid, locale, flags, parameters, result, exception, bad_argument);
}
