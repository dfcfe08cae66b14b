/// @file What documents of every type implement.
#pragma once

#include "cad_host/document.h"
#include "com_object.h"
#include "extension_object.h"
#include "selection_object.h"

namespace cad_host {

/// IModelDoc2 and the interface of the document's type.
template <class... Others>
class ModelDocObject : public ComObject<Document, IModelDoc2, Others...> {
 public:
  using ComObject<Document, IModelDoc2, Others...>::ComObject;

  std::wstring Describe() const override {
    const auto document = this->GetState();
    return document ? document->Describe() : L"a closed document";
  }

  STDMETHODIMP get_ISelectionManager(ISelectionMgr** retval) override {
    return this->Call(L"IModelDoc2::get_ISelectionManager", {Out(retval)}, [&](Document&) {
      *retval = ObjectFor<SelectionObject>(this->SharedServices(), this->GetState());
      return S_OK;
    });
  }

  STDMETHODIMP GetTitle(BSTR* retval) override {
    return this->Call(L"IModelDoc2::GetTitle", {Out(retval)}, [&](Document& document) {
      Give(retval, document.title);
      return S_OK;
    });
  }

  STDMETHODIMP GetPathName(BSTR* retval) override {
    return this->Call(L"IModelDoc2::GetPathName", {Out(retval)}, [&](Document& document) {
      Give(retval, document.path);
      return S_OK;
    });
  }

  STDMETHODIMP GetType(long* retval) override {
    return this->Call(L"IModelDoc2::GetType", {Out(retval)}, [&](Document& document) {
      *retval = document.Type();
      return S_OK;
    });
  }

  STDMETHODIMP IsOpenedViewOnly(VARIANT_BOOL* retval) override {
    return this->Call(L"IModelDoc2::IsOpenedViewOnly", {Out(retval)}, [&](Document& document) {
      Give(retval, document.view_only);
      return S_OK;
    });
  }

  STDMETHODIMP IsOpenedReadOnly(VARIANT_BOOL* retval) override {
    return this->Call(L"IModelDoc2::IsOpenedReadOnly", {Out(retval)}, [&](Document& document) {
      Give(retval, document.read_only);
      return S_OK;
    });
  }

  STDMETHODIMP GetSaveFlag(VARIANT_BOOL* retval) override {
    return this->Call(L"IModelDoc2::GetSaveFlag", {Out(retval)}, [&](Document& document) {
      Give(retval, document.changed);
      return S_OK;
    });
  }

  STDMETHODIMP get_Extension(IModelDocExtension** retval) override {
    return this->Call(L"IModelDoc2::get_Extension", {Out(retval)}, [&](Document&) {
      *retval = ObjectFor<ExtensionObject>(this->SharedServices(), this->GetState());
      return S_OK;
    });
  }
};

using PartObject = ModelDocObject<>;

}  // namespace cad_host
