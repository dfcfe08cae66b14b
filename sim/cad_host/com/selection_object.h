/// @file The selection of a document, and faces of the model that can be selected.
#pragma once

#include "cad_host/document.h"
#include "com_object.h"

namespace cad_host {

class SelectionObject : public ComObject<Document, ISelectionMgr> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override { return L"the selection manager"; }

  STDMETHODIMP GetSelectedObject6(long Index, long Mark, IDispatch** retval) override;
  STDMETHODIMP IGetSelectionPoint2(long Index, long Mark, double* retval) override;

  // Only IGetSelectionPoint2, only while Quirk::kCallerArrays is off.
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* bad_argument) override;
};

/// A face of the model: an object that is not a component.
class FaceObject : public ComObject<Document, IDispatch> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override { return L"a face of the model"; }
};

}  // namespace cad_host
