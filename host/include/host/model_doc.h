/// @file Documents of any type.
#pragma once

#include "host/interfaces_fwd.h"
#include "host/slots.h"

namespace layout {
struct ModelDoc2_8 : ReserveSlots<IDispatch, 7, 8> {
  virtual HRESULT STDMETHODCALLTYPE get_ISelectionManager(ISelectionMgr** retval) = 0;
};
struct ModelDoc2_92 : ReserveSlots<ModelDoc2_8, 9, 90> {
  virtual HRESULT STDMETHODCALLTYPE GetTitle(BSTR* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPathName(BSTR* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetType(long* retval) = 0;
};
struct ModelDoc2_399 : ReserveSlots<ModelDoc2_92, 93, 398> {
  virtual HRESULT STDMETHODCALLTYPE IsOpenedViewOnly(VARIANT_BOOL* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsOpenedReadOnly(VARIANT_BOOL* retval) = 0;
};
struct ModelDoc2_473 : ReserveSlots<ModelDoc2_399, 400, 473> {
  virtual HRESULT STDMETHODCALLTYPE GetSaveFlag(VARIANT_BOOL* retval) = 0;
};
}  // namespace layout

/// An open document of any type.
struct IModelDoc2 : ReserveSlots<layout::ModelDoc2_473, 474, 798> {
  virtual HRESULT STDMETHODCALLTYPE get_Extension(IModelDocExtension** retval) = 0;
};
__CRT_UUID_DECL(IModelDoc2, 0xb90793fb, 0xef3d, 0x4b80, 0xa5, 0xc4, 0x99, 0x95, 0x9c, 0xdb, 0x6c, 0xeb)
_COM_SMARTPTR_TYPEDEF(IModelDoc2, __uuidof(IModelDoc2));

/// The extension of IModelDoc2, with access to a document's custom properties.
struct IModelDocExtension : ReserveSlots<IDispatch, 7, 92> {
  virtual HRESULT STDMETHODCALLTYPE get_CustomPropertyManager(BSTR ConfigName,
                                                              ICustomPropertyManager** retval) = 0;
};
__CRT_UUID_DECL(IModelDocExtension, 0x99f4d4af, 0xf268, 0x4ee1, 0x8c, 0x55, 0x04, 0x1f, 0x7b, 0xec, 0xf8,
                0x79)
_COM_SMARTPTR_TYPEDEF(IModelDocExtension, __uuidof(IModelDocExtension));
