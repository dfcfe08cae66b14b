/// @file Where event sinks are advised.
#pragma once

#include "face.h"
#include "host_state.h"

namespace cad_host {

/// The connection point of the application events.
class ConnectionPointFace : public Face<HostState, IConnectionPoint> {
 public:
  using Face::Face;

  std::wstring Describe() const override { return L"the connection point of the application events"; }

  STDMETHODIMP GetConnectionInterface(IID* iid) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override;
};

}  // namespace cad_host
