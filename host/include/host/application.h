/// @file The host application and the interface through which it controls an add-in.
#pragma once

#include "host/interfaces_fwd.h"
#include "host/slots.h"

namespace layout {
struct SldWorks_11 : ReserveSlots<IDispatch, 7, 11> {
  virtual HRESULT STDMETHODCALLTYPE ActivateDoc(BSTR Name, IDispatch** retval) = 0;
};
struct SldWorks_17 : ReserveSlots<SldWorks_11, 12, 17> {
  virtual HRESULT STDMETHODCALLTYPE CloseDoc(BSTR Name) = 0;
};
struct SldWorks_25 : ReserveSlots<SldWorks_17, 18, 25> {
  virtual HRESULT STDMETHODCALLTYPE RevisionNumber(BSTR* retval) = 0;
};
struct SldWorks_131 : ReserveSlots<SldWorks_25, 26, 131> {
  virtual HRESULT STDMETHODCALLTYPE GetOpenDocumentByName(BSTR DocumentName, IDispatch** retval) = 0;
};
struct SldWorks_155 : ReserveSlots<SldWorks_131, 132, 155> {
  virtual HRESULT STDMETHODCALLTYPE SetAddinCallbackInfo(long ModuleHandle, IDispatch* AddinCallbacks,
                                                         long Cookie, VARIANT_BOOL* retval) = 0;
};
struct SldWorks_165 : ReserveSlots<SldWorks_155, 156, 165> {
  virtual HRESULT STDMETHODCALLTYPE get_IActiveDoc2(IModelDoc2** retval) = 0;
};
struct SldWorks_176 : ReserveSlots<SldWorks_165, 166, 176> {
  virtual HRESULT STDMETHODCALLTYPE OpenDoc6(BSTR FileName, long Type, long Options, BSTR Configuration,
                                             long* Errors, long* Warnings, IModelDoc2** retval) = 0;
};
}  // namespace layout

/// The host application. A dual interface with 336 (release 2016) to 368 (release 2023) slots.
struct ISldWorks : ReserveSlots<layout::SldWorks_176, 177, 231> {
  virtual HRESULT STDMETHODCALLTYPE GetCommandManager(long Cookie, ICommandManager** retval) = 0;
};
__CRT_UUID_DECL(ISldWorks, 0x83a33d22, 0x27c5, 0x11ce, 0xbf, 0xd4, 0x00, 0x40, 0x05, 0x13, 0xbb, 0x57)
_COM_SMARTPTR_TYPEDEF(ISldWorks, __uuidof(ISldWorks));

/// The interface through which the host connects and disconnects an add-in. Not derived from IDispatch.
struct ISwAddin : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE ConnectToSW(IDispatch* ThisSW, long Cookie,
                                                VARIANT_BOOL* IsConnected) = 0;
  virtual HRESULT STDMETHODCALLTYPE DisconnectFromSW(VARIANT_BOOL* IsDisconnected) = 0;
};
__CRT_UUID_DECL(ISwAddin, 0xda306a0d, 0xeac5, 0x4406, 0x86, 0x10, 0xb1, 0xda, 0x80, 0x5d, 0x92, 0x70)
_COM_SMARTPTR_TYPEDEF(ISwAddin, __uuidof(ISwAddin));
