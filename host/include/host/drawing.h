/// @file Drawings.
#pragma once

#include "host/interfaces_fwd.h"
#include "host/slots.h"

/// The interface of drawing documents, in addition to IModelDoc2.
struct IDrawingDoc : ReserveSlots<IDispatch, 7, 236> {
  virtual HRESULT STDMETHODCALLTYPE CreateDrawViewFromModelView3(BSTR ModelName, BSTR ViewName, double LocX,
                                                                 double LocY, double LocZ,
                                                                 IView** retval) = 0;
};
__CRT_UUID_DECL(IDrawingDoc, 0x83a33d33, 0x27c5, 0x11ce, 0xbf, 0xd4, 0x00, 0x40, 0x05, 0x13, 0xbb, 0x57)
_COM_SMARTPTR_TYPEDEF(IDrawingDoc, __uuidof(IDrawingDoc));

/// A view of a model on a drawing sheet. No code here calls its methods, so they are not declared.
struct IView : IDispatch {};
_COM_SMARTPTR_TYPEDEF(IView, IID_IDispatch);
