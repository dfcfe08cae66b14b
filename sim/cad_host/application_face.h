/// @file The application object.
#pragma once

#include "face.h"
#include "host_state.h"

namespace cad_host {

/// ISldWorks and the way to the application's events.
class ApplicationFace : public Face<HostState, ISldWorks, IConnectionPointContainer> {
 public:
  using Face::Face;

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

}  // namespace cad_host
