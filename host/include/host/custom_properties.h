/// @file Custom properties.
#pragma once

#include "host/interfaces_fwd.h"
#include "host/slots.h"

namespace layout {
struct CustomPropertyManager_9 : ReserveSlots<IDispatch, 7, 8> {
  virtual HRESULT STDMETHODCALLTYPE get_Count(long* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetNames(VARIANT* retval) = 0;
};
struct CustomPropertyManager_13 : ReserveSlots<CustomPropertyManager_9, 10, 13> {
  virtual HRESULT STDMETHODCALLTYPE Set(BSTR FieldName, BSTR FieldValue, long* retval) = 0;
};
struct CustomPropertyManager_16 : ReserveSlots<CustomPropertyManager_13, 14, 16> {
  virtual HRESULT STDMETHODCALLTYPE Get2(BSTR FieldName, BSTR* ValOut, BSTR* ReesolvedValOut) = 0;
};
struct CustomPropertyManager_19 : ReserveSlots<CustomPropertyManager_16, 17, 19> {
  virtual HRESULT STDMETHODCALLTYPE GetAll(VARIANT* PropNames, VARIANT* PropTypes, VARIANT* PropValues,
                                           long* retval) = 0;
};
}  // namespace layout

/// The custom properties of one document or, with a configuration name, of one configuration.
struct ICustomPropertyManager : ReserveSlots<layout::CustomPropertyManager_19, 20, 21> {
  virtual HRESULT STDMETHODCALLTYPE Get3(BSTR FieldName, VARIANT_BOOL UseCached, BSTR* ValOut,
                                         BSTR* ResolvedValOut, VARIANT_BOOL* retval) = 0;
};
__CRT_UUID_DECL(ICustomPropertyManager, 0xf1938d94, 0x0d1f, 0x4e88, 0x98, 0x74, 0x16, 0x4b, 0x1e, 0x65, 0x68,
                0xf1)
_COM_SMARTPTR_TYPEDEF(ICustomPropertyManager, __uuidof(ICustomPropertyManager));
