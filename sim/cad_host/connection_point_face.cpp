#include "connection_point_face.h"

#include "application_face.h"

namespace cad_host {

STDMETHODIMP ConnectionPointFace::GetConnectionInterface(IID* iid) {
  return Call(L"IConnectionPoint::GetConnectionInterface", {Out(iid)}, [&](HostState&) {
    *iid = host::kApplicationEventsId;
    return S_OK;
  });
}

STDMETHODIMP ConnectionPointFace::GetConnectionPointContainer(IConnectionPointContainer** container) {
  return Call(L"IConnectionPoint::GetConnectionPointContainer", {Out(container)}, [&](HostState& host) {
    *container = FaceOf<ApplicationFace>(host.services, host.shared_from_this());
    return S_OK;
  });
}

STDMETHODIMP ConnectionPointFace::Advise(IUnknown* sink, DWORD* cookie) {
  return Call(L"IConnectionPoint::Advise", {In(sink), Out(cookie)}, [&](HostState& host) {
    if (!sink) return E_POINTER;
    IDispatchPtr events;
    const HRESULT answers =
        sink->QueryInterface(host::kApplicationEventsId, reinterpret_cast<void**>(&events));
    if (FAILED(answers)) return CONNECT_E_CANNOTCONNECT;
    *cookie = host.events.Advise(events);
    return S_OK;
  });
}

STDMETHODIMP ConnectionPointFace::Unadvise(DWORD cookie) {
  return Call(L"IConnectionPoint::Unadvise", {In(cookie)},
              [&](HostState& host) { return host.events.Unadvise(cookie) ? S_OK : CONNECT_E_NOCONNECTION; });
}

STDMETHODIMP ConnectionPointFace::EnumConnections(IEnumConnections** connections) {
  return Call(L"IConnectionPoint::EnumConnections", {Out(connections)}, [](HostState&) { return E_NOTIMPL; });
}

}  // namespace cad_host
