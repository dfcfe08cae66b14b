/// @file A COM object of the host.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>

#include <functional>

/// An object of the host. It records the thread on which it is called, and runs an action of the test there.
class HostObject final : public IDispatch {
 public:
  std::function<void()> action = [] {};
  DWORD called_on = 0;

  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // not counted: a variable of the test
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == __uuidof(IUnknown) || id == __uuidof(IDispatch);
    *object = known ? static_cast<IDispatch*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    called_on = GetCurrentThreadId();
    action();
    *count = 42;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }
};
