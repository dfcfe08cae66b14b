/// @file The application object and the connection point of its events.
#pragma once

#include "com_object.h"
#include "host_state.h"

namespace cad_host {

/// ISldWorks, and the connection points of the application.
class ApplicationObject : public ComObject<HostState, ISldWorks, IConnectionPointContainer> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override { return L"the application"; }

  STDMETHODIMP ActivateDoc(BSTR Name, IDispatch** retval) override;
  STDMETHODIMP CloseDoc(BSTR Name) override;
  STDMETHODIMP RevisionNumber(BSTR* retval) override;
  STDMETHODIMP GetOpenDocumentByName(BSTR DocumentName, IDispatch** retval) override;
  STDMETHODIMP SetAddinCallbackInfo(long ModuleHandle, IDispatch* AddinCallbacks, long Cookie,
                                    VARIANT_BOOL* retval) override;
  STDMETHODIMP get_IActiveDoc2(IModelDoc2** retval) override;
  STDMETHODIMP OpenDoc6(BSTR FileName, long Type, long Options, BSTR Configuration, long* Errors,
                        long* Warnings, IModelDoc2** retval) override;
  STDMETHODIMP GetCommandManager(long Cookie, ICommandManager** retval) override;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;
};

/// The connection point of the application events.
class ConnectionPointObject : public ComObject<HostState, IConnectionPoint> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override { return L"the connection point of the application events"; }

  STDMETHODIMP GetConnectionInterface(IID* iid) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override;
};

}  // namespace cad_host
