/// @file The methods of the add-in's own interface.
#pragma once

#include "solidworks_add_in_h.h"

/// Their names in the order of the interface; each command is followed by its enable method.
inline constexpr const wchar_t* kMethodNames[] = {
    L"PlmLogin",
    L"EnablePlmLogin",
    L"PlmLogOut",
    L"EnablePlmLogOut",
    L"OpenDataSelector",
    L"EnableOpenDataSelector",
    L"PlmMyCheckOutList",
    L"EnablePlmMyCheckOutList",
    L"PlmWf",
    L"EnablePlmWf",
    L"PlmCode",
    L"EnablePlmCode",
    L"PlmQuery",
    L"EnablePlmQuery",
    L"PlmImportCurrent",
    L"EnableImportCurrent",
    L"PlmLotimport",
    L"EnableLotimport",
    L"PlmCreateMaterial",
    L"EnablePlmCreateMaterial",
    L"PlmMyTempMaterial",
    L"EnablePlmMyTempMaterial",
    L"PlmTaskManage",
    L"EnablePlmTaskManage",
    L"PlmMaterialBackFill",
    L"EnablePlmMaterialBackFill",
    L"PlmImportChangeItem",
    L"EnablePlmImportChangeItem",
};

/// An add-in whose commands all do the same, and whose enable methods all do the same.
class UniformAddIn : public ISolidWorksAddIn {
 public:
  STDMETHODIMP PlmLogin() override { return OnCommand(L"PlmLogin"); }
  STDMETHODIMP EnablePlmLogin(long* status) override { return OnEnable(L"EnablePlmLogin", status); }
  STDMETHODIMP PlmLogOut() override { return OnCommand(L"PlmLogOut"); }
  STDMETHODIMP EnablePlmLogOut(long* status) override { return OnEnable(L"EnablePlmLogOut", status); }
  STDMETHODIMP OpenDataSelector() override { return OnCommand(L"OpenDataSelector"); }
  STDMETHODIMP EnableOpenDataSelector(long* status) override {
    return OnEnable(L"EnableOpenDataSelector", status);
  }
  STDMETHODIMP PlmMyCheckOutList() override { return OnCommand(L"PlmMyCheckOutList"); }
  STDMETHODIMP EnablePlmMyCheckOutList(long* status) override {
    return OnEnable(L"EnablePlmMyCheckOutList", status);
  }
  STDMETHODIMP PlmWf() override { return OnCommand(L"PlmWf"); }
  STDMETHODIMP EnablePlmWf(long* status) override { return OnEnable(L"EnablePlmWf", status); }
  STDMETHODIMP PlmCode() override { return OnCommand(L"PlmCode"); }
  STDMETHODIMP EnablePlmCode(long* status) override { return OnEnable(L"EnablePlmCode", status); }
  STDMETHODIMP PlmQuery() override { return OnCommand(L"PlmQuery"); }
  STDMETHODIMP EnablePlmQuery(long* status) override { return OnEnable(L"EnablePlmQuery", status); }
  STDMETHODIMP PlmImportCurrent() override { return OnCommand(L"PlmImportCurrent"); }
  STDMETHODIMP EnableImportCurrent(long* status) override { return OnEnable(L"EnableImportCurrent", status); }
  STDMETHODIMP PlmLotimport() override { return OnCommand(L"PlmLotimport"); }
  STDMETHODIMP EnableLotimport(long* status) override { return OnEnable(L"EnableLotimport", status); }
  STDMETHODIMP PlmCreateMaterial() override { return OnCommand(L"PlmCreateMaterial"); }
  STDMETHODIMP EnablePlmCreateMaterial(long* status) override {
    return OnEnable(L"EnablePlmCreateMaterial", status);
  }
  STDMETHODIMP PlmMyTempMaterial() override { return OnCommand(L"PlmMyTempMaterial"); }
  STDMETHODIMP EnablePlmMyTempMaterial(long* status) override {
    return OnEnable(L"EnablePlmMyTempMaterial", status);
  }
  STDMETHODIMP PlmTaskManage() override { return OnCommand(L"PlmTaskManage"); }
  STDMETHODIMP EnablePlmTaskManage(long* status) override { return OnEnable(L"EnablePlmTaskManage", status); }
  STDMETHODIMP PlmMaterialBackFill() override { return OnCommand(L"PlmMaterialBackFill"); }
  STDMETHODIMP EnablePlmMaterialBackFill(long* status) override {
    return OnEnable(L"EnablePlmMaterialBackFill", status);
  }
  STDMETHODIMP PlmImportChangeItem() override { return OnCommand(L"PlmImportChangeItem"); }
  STDMETHODIMP EnablePlmImportChangeItem(long* status) override {
    return OnEnable(L"EnablePlmImportChangeItem", status);
  }

 protected:
  /// The command or enable method `name` was called.
  virtual HRESULT OnCommand(const wchar_t* name) = 0;
  virtual HRESULT OnEnable(const wchar_t* name, long* status) = 0;
};
