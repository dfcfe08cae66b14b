/// @file The guards of the add-in's own interfaces and of those that it implements for others.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include "guard.h"
#include "host/application.h"
#include "solidworks_add_in_h.h"

template <>
class Guard<ISolidWorksAddIn> final : public DispatchGuard<ISolidWorksAddIn> {
 public:
  using DispatchGuard::DispatchGuard;

  STDMETHODIMP PlmLogin() override { return Run(L"ISolidWorksAddIn::PlmLogin", &ISolidWorksAddIn::PlmLogin); }
  STDMETHODIMP EnablePlmLogin(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmLogin", &ISolidWorksAddIn::EnablePlmLogin, status);
  }
  STDMETHODIMP PlmLogOut() override {
    return Run(L"ISolidWorksAddIn::PlmLogOut", &ISolidWorksAddIn::PlmLogOut);
  }
  STDMETHODIMP EnablePlmLogOut(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmLogOut", &ISolidWorksAddIn::EnablePlmLogOut, status);
  }
  STDMETHODIMP OpenDataSelector() override {
    return Run(L"ISolidWorksAddIn::OpenDataSelector", &ISolidWorksAddIn::OpenDataSelector);
  }
  STDMETHODIMP EnableOpenDataSelector(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnableOpenDataSelector", &ISolidWorksAddIn::EnableOpenDataSelector,
                  status);
  }
  STDMETHODIMP PlmMyCheckOutList() override {
    return Run(L"ISolidWorksAddIn::PlmMyCheckOutList", &ISolidWorksAddIn::PlmMyCheckOutList);
  }
  STDMETHODIMP EnablePlmMyCheckOutList(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmMyCheckOutList", &ISolidWorksAddIn::EnablePlmMyCheckOutList,
                  status);
  }
  STDMETHODIMP PlmWf() override { return Run(L"ISolidWorksAddIn::PlmWf", &ISolidWorksAddIn::PlmWf); }
  STDMETHODIMP EnablePlmWf(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmWf", &ISolidWorksAddIn::EnablePlmWf, status);
  }
  STDMETHODIMP PlmCode() override { return Run(L"ISolidWorksAddIn::PlmCode", &ISolidWorksAddIn::PlmCode); }
  STDMETHODIMP EnablePlmCode(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmCode", &ISolidWorksAddIn::EnablePlmCode, status);
  }
  STDMETHODIMP PlmQuery() override { return Run(L"ISolidWorksAddIn::PlmQuery", &ISolidWorksAddIn::PlmQuery); }
  STDMETHODIMP EnablePlmQuery(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmQuery", &ISolidWorksAddIn::EnablePlmQuery, status);
  }
  STDMETHODIMP PlmImportCurrent() override {
    return Run(L"ISolidWorksAddIn::PlmImportCurrent", &ISolidWorksAddIn::PlmImportCurrent);
  }
  STDMETHODIMP EnableImportCurrent(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnableImportCurrent", &ISolidWorksAddIn::EnableImportCurrent, status);
  }
  STDMETHODIMP PlmLotimport() override {
    return Run(L"ISolidWorksAddIn::PlmLotimport", &ISolidWorksAddIn::PlmLotimport);
  }
  STDMETHODIMP EnableLotimport(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnableLotimport", &ISolidWorksAddIn::EnableLotimport, status);
  }
  STDMETHODIMP PlmCreateMaterial() override {
    return Run(L"ISolidWorksAddIn::PlmCreateMaterial", &ISolidWorksAddIn::PlmCreateMaterial);
  }
  STDMETHODIMP EnablePlmCreateMaterial(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmCreateMaterial", &ISolidWorksAddIn::EnablePlmCreateMaterial,
                  status);
  }
  STDMETHODIMP PlmMyTempMaterial() override {
    return Run(L"ISolidWorksAddIn::PlmMyTempMaterial", &ISolidWorksAddIn::PlmMyTempMaterial);
  }
  STDMETHODIMP EnablePlmMyTempMaterial(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmMyTempMaterial", &ISolidWorksAddIn::EnablePlmMyTempMaterial,
                  status);
  }
  STDMETHODIMP PlmTaskManage() override {
    return Run(L"ISolidWorksAddIn::PlmTaskManage", &ISolidWorksAddIn::PlmTaskManage);
  }
  STDMETHODIMP EnablePlmTaskManage(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmTaskManage", &ISolidWorksAddIn::EnablePlmTaskManage, status);
  }
  STDMETHODIMP PlmMaterialBackFill() override {
    return Run(L"ISolidWorksAddIn::PlmMaterialBackFill", &ISolidWorksAddIn::PlmMaterialBackFill);
  }
  STDMETHODIMP EnablePlmMaterialBackFill(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmMaterialBackFill",
                  &ISolidWorksAddIn::EnablePlmMaterialBackFill, status);
  }
  STDMETHODIMP PlmImportChangeItem() override {
    return Run(L"ISolidWorksAddIn::PlmImportChangeItem", &ISolidWorksAddIn::PlmImportChangeItem);
  }
  STDMETHODIMP EnablePlmImportChangeItem(LONG* status) override {
    return Report(L"ISolidWorksAddIn::EnablePlmImportChangeItem",
                  &ISolidWorksAddIn::EnablePlmImportChangeItem, status);
  }

 private:
  using Command = HRESULT (STDMETHODCALLTYPE ISolidWorksAddIn::*)();
  using EnableMethod = HRESULT (STDMETHODCALLTYPE ISolidWorksAddIn::*)(LONG* status);

  HRESULT Run(const wchar_t* method, Command command) noexcept {
    return EndExceptions(method, [&] {
      // While a command waits the host may let go of the add-in.
      const IUnknownPtr self(this);
      return (Target().*command)();
    });
  }
  HRESULT Report(const wchar_t* method, EnableMethod enable, LONG* status) noexcept {
    return EndExceptions(method, [&] { return (Target().*enable)(status); });
  }
};

template <>
class Guard<ISwAddin> final : public GuardBase<ISwAddin> {
 public:
  using GuardBase::GuardBase;

  STDMETHODIMP ConnectToSW(IDispatch* ThisSW, long Cookie, VARIANT_BOOL* IsConnected) override {
    if (IsConnected) *IsConnected = VARIANT_FALSE;
    VARIANT_BOOL connected = VARIANT_FALSE;
    try {
      const IUnknownPtr self(this);
      const HRESULT result = Target().ConnectToSW(ThisSW, Cookie, &connected);
      if (IsConnected) *IsConnected = connected;
      return result;
    } catch (...) {  // logged by the method, which knows the file or the call that failed
      return CodeOfEscapedException();
    }
  }
  STDMETHODIMP DisconnectFromSW(VARIANT_BOOL* IsDisconnected) override {
    if (IsDisconnected) *IsDisconnected = VARIANT_FALSE;
    return EndExceptions(L"ISwAddin::DisconnectFromSW", [&] {
      // While the logout waits the host may let go of the add-in.
      const IUnknownPtr self(this);
      // An exception after the method has set its result leaves the host's at false.
      VARIANT_BOOL disconnected = VARIANT_FALSE;
      const HRESULT result = Target().DisconnectFromSW(&disconnected);
      if (IsDisconnected) *IsDisconnected = disconnected;
      return result;
    });
  }
};

template <>
class Guard<IBitmapHandler> final : public DispatchGuard<IBitmapHandler> {
 public:
  using DispatchGuard::DispatchGuard;

  STDMETHODIMP CreateBitmapFileFromResource(LONG resID, BSTR* retval) override {
    if (retval) *retval = nullptr;
    return EndExceptions(L"IBitmapHandler::CreateBitmapFileFromResource",
                         [&] { return Target().CreateBitmapFileFromResource(resID, retval); });
  }
  STDMETHODIMP Dispose() override {
    return EndExceptions(L"IBitmapHandler::Dispose", [&] { return Target().Dispose(); });
  }
};

template <>
class Guard<IClassFactory> final : public GuardBase<IClassFactory> {
 public:
  using GuardBase::GuardBase;

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (object) *object = nullptr;
    return EndExceptions(L"IClassFactory::CreateInstance",
                         [&] { return Target().CreateInstance(outer, iid, object); });
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    return EndExceptions(L"IClassFactory::LockServer", [&] { return Target().LockServer(lock); });
  }
};
