// Which items the host greys out. Only the login state counts, not the active document or the login's answer.
#include "solidworks_add_in.h"

namespace {

HRESULT Report(long* status, bool enabled) {
  if (!status) return E_POINTER;
  *status = enabled ? 1 : 0;
  return S_OK;
}

}  // namespace

STDMETHODIMP CSolidWorksAddIn::EnablePlmLogin(long* status) { return Report(status, !m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmLogOut(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnableOpenDataSelector(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmMyCheckOutList(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmWf(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmCode(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmQuery(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnableImportCurrent(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnableLotimport(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmCreateMaterial(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmMyTempMaterial(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmTaskManage(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmMaterialBackFill(long* status) { return Report(status, m_loggedIn); }
STDMETHODIMP CSolidWorksAddIn::EnablePlmImportChangeItem(long* status) { return Report(status, m_loggedIn); }
