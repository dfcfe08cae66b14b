/// @file A component instance of an assembly.
#pragma once

#include "cad_host/document.h"
#include "com_object.h"

namespace cad_host {

class ComponentObject : public ComObject<Component, IComponent2> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override;

  STDMETHODIMP GetSuppression(long* retval) override;
  STDMETHODIMP GetPathName(BSTR* retval) override;
  STDMETHODIMP get_Name2(BSTR* retval) override;
  STDMETHODIMP SetSuppression2(long State, long* retval) override;
};

}  // namespace cad_host
