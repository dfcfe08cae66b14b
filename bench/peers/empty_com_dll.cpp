// A COM DLL of the same compiler that does nothing: what creating an object costs in any case.
#include <windows.h>

#include <unknwn.h>

#include "host/application.h"

namespace {

/// An object that is its own class object. One is enough, and it lives as long as the DLL.
class Nothing : public IClassFactory, public ISwAddin {
 public:
  virtual ~Nothing() = default;
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (iid == __uuidof(ISwAddin)) {
      *object = static_cast<ISwAddin*>(this);
    } else if (iid == __uuidof(IUnknown) || iid == __uuidof(IClassFactory)) {
      *object = static_cast<IClassFactory*>(this);
    } else {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override {
    return QueryInterface(iid, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }
  STDMETHODIMP ConnectToSW(IDispatch*, long, VARIANT_BOOL*) override { return S_OK; }
  STDMETHODIMP DisconnectFromSW(VARIANT_BOOL*) override { return S_OK; }
};

Nothing nothing;

}  // namespace

STDAPI DllGetClassObject(REFCLSID, REFIID iid, void** object) { return nothing.QueryInterface(iid, object); }
STDAPI DllCanUnloadNow() { return S_FALSE; }
