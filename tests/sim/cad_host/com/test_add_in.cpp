#include "test_add_in.h"

namespace {

// Ids of methods are higher than those of the application events, because both are passed to Invoke.
constexpr DISPID kFirstMethod = 1000;

}  // namespace

STDMETHODIMP TestAddIn::QueryInterface(REFIID iid, void** object) {
  *object = nullptr;
  if (iid == __uuidof(IUnknown) || iid == __uuidof(ISwAddin)) *object = static_cast<ISwAddin*>(this);
  if (iid == __uuidof(IDispatch) || iid == host::kApplicationEventsId)
    *object = static_cast<IDispatch*>(this);
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP TestAddIn::ConnectToSW(IDispatch* host, long cookie, VARIANT_BOOL* connected) {
  *connected = VARIANT_TRUE;
  return on_connect ? on_connect(host, cookie, connected) : S_OK;
}

STDMETHODIMP TestAddIn::DisconnectFromSW(VARIANT_BOOL* disconnected) {
  *disconnected = VARIANT_TRUE;
  return on_disconnect ? on_disconnect(disconnected) : S_OK;
}

STDMETHODIMP TestAddIn::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
  *ids = DISPID_UNKNOWN;
  if (!methods.contains(*names)) return DISP_E_UNKNOWNNAME;
  *ids = kFirstMethod + static_cast<DISPID>(m_names.size());
  m_names.emplace_back(*names);
  return S_OK;
}

STDMETHODIMP TestAddIn::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* result,
                               EXCEPINFO* exception, UINT*) {
  if (id >= kFirstMethod) {
    return methods.at(m_names.at(static_cast<std::size_t>(id - kFirstMethod)))(*arguments, result, exception);
  }
  Event event{.id = id, .types = {}, .texts = {}};
  for (UINT place = arguments->cArgs; place-- > 0;) {
    const VARIANTARG& argument = arguments->rgvarg[place];
    event.types.push_back(argument.vt);
    if (argument.vt == VT_BSTR) event.texts.emplace_back(argument.bstrVal, SysStringLen(argument.bstrVal));
  }
  events.push_back(event);
  return event_result;
}
