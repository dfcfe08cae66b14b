/// @file Assemblies and their components.
#pragma once

#include "host/interfaces_fwd.h"
#include "host/slots.h"

namespace layout {
struct Component2_40 : ReserveSlots<IDispatch, 7, 40> {
  virtual HRESULT STDMETHODCALLTYPE GetSuppression(long* retval) = 0;
};
struct Component2_44 : ReserveSlots<Component2_40, 41, 44> {
  virtual HRESULT STDMETHODCALLTYPE GetPathName(BSTR* retval) = 0;
};
struct Component2_69 : ReserveSlots<Component2_44, 45, 69> {
  virtual HRESULT STDMETHODCALLTYPE get_Name2(BSTR* retval) = 0;
};
}  // namespace layout

/// One instance of a part or assembly in an assembly.
struct IComponent2 : ReserveSlots<layout::Component2_69, 70, 110> {
  virtual HRESULT STDMETHODCALLTYPE SetSuppression2(long State, long* retval) = 0;
};
__CRT_UUID_DECL(IComponent2, 0x655d6f2a, 0x5441, 0x45d1, 0x8c, 0xba, 0xd3, 0x5f, 0xb2, 0x69, 0x88, 0xe4)
_COM_SMARTPTR_TYPEDEF(IComponent2, __uuidof(IComponent2));

namespace layout {
struct AssemblyDoc_153 : ReserveSlots<IDispatch, 7, 153> {
  virtual HRESULT STDMETHODCALLTYPE AddComponent5(BSTR CompName, long ConfigOption, BSTR NewConfigName,
                                                  VARIANT_BOOL UseConfigForPartReferences,
                                                  BSTR ExistingConfigName, double X, double Y, double Z,
                                                  IComponent2** retval) = 0;
};
}  // namespace layout

/// The interface of assembly documents, in addition to IModelDoc2.
struct IAssemblyDoc : ReserveSlots<layout::AssemblyDoc_153, 154, 193> {
  virtual HRESULT STDMETHODCALLTYPE ReplaceComponents2(BSTR FileName, BSTR ConfigName,
                                                       VARIANT_BOOL ReplaceAllInstance, long UseConfigChoice,
                                                       VARIANT_BOOL ReAttachMates, VARIANT_BOOL* retval) = 0;
};
__CRT_UUID_DECL(IAssemblyDoc, 0x83a33d35, 0x27c5, 0x11ce, 0xbf, 0xd4, 0x00, 0x40, 0x05, 0x13, 0xbb, 0x57)
_COM_SMARTPTR_TYPEDEF(IAssemblyDoc, __uuidof(IAssemblyDoc));
