/// @file The selection.
#pragma once

#include "host/interfaces_fwd.h"
#include "host/slots.h"

namespace layout {
struct SelectionMgr_44 : ReserveSlots<IDispatch, 7, 44> {
  virtual HRESULT STDMETHODCALLTYPE GetSelectedObject6(long Index, long Mark, IDispatch** retval) = 0;
};
}  // namespace layout

/// What the user has selected in a document.
struct ISelectionMgr : ReserveSlots<layout::SelectionMgr_44, 45, 46> {
  virtual HRESULT STDMETHODCALLTYPE IGetSelectionPoint2(long Index, long Mark, double* retval) = 0;
};
__CRT_UUID_DECL(ISelectionMgr, 0x83a33d59, 0x27c5, 0x11ce, 0xbf, 0xd4, 0x00, 0x40, 0x05, 0x13, 0xbb, 0x57)
_COM_SMARTPTR_TYPEDEF(ISelectionMgr, __uuidof(ISelectionMgr));
