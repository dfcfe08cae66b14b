/// @file An add-in that records the calls of its methods.
#pragma once

#include <string>

#include "module/dispatch.h"
#include "solidworks_add_in_h.h"

/// Dispatches like the add-in; every method records its name, then throws or returns what the test has set.
/// References are not counted, because the test owns the object.
class RecordingAddIn : public ISolidWorksAddIn {
 public:
  std::wstring called;        ///< the names of the methods called, each followed by a blank
  HRESULT result = S_OK;      ///< what every method returns
  long status = 1;            ///< the status that enable methods return
  void (*raise)() = nullptr;  ///< called by every method; may throw

  virtual ~RecordingAddIn() = default;

  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return add_in_dispatch::GetTypeInfoCount(count); }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return add_in_dispatch::GetTypeInfo(index, locale, info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
    return add_in_dispatch::GetIDsOfNames(iid, names, count, locale, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* call_result, EXCEPINFO* exception, UINT* bad_argument) override {
    return add_in_dispatch::Invoke(*this, id, iid, locale, flags, parameters, call_result, exception,
                                   bad_argument);
  }

  STDMETHODIMP PlmLogin() override { return Record(L"PlmLogin"); }
  STDMETHODIMP EnablePlmLogin(long* place) override { return Report(L"EnablePlmLogin", place); }
  STDMETHODIMP PlmLogOut() override { return Record(L"PlmLogOut"); }
  STDMETHODIMP EnablePlmLogOut(long* place) override { return Report(L"EnablePlmLogOut", place); }
  STDMETHODIMP OpenDataSelector() override { return Record(L"OpenDataSelector"); }
  STDMETHODIMP EnableOpenDataSelector(long* place) override {
    return Report(L"EnableOpenDataSelector", place);
  }
  STDMETHODIMP PlmMyCheckOutList() override { return Record(L"PlmMyCheckOutList"); }
  STDMETHODIMP EnablePlmMyCheckOutList(long* place) override {
    return Report(L"EnablePlmMyCheckOutList", place);
  }
  STDMETHODIMP PlmWf() override { return Record(L"PlmWf"); }
  STDMETHODIMP EnablePlmWf(long* place) override { return Report(L"EnablePlmWf", place); }
  STDMETHODIMP PlmCode() override { return Record(L"PlmCode"); }
  STDMETHODIMP EnablePlmCode(long* place) override { return Report(L"EnablePlmCode", place); }
  STDMETHODIMP PlmQuery() override { return Record(L"PlmQuery"); }
  STDMETHODIMP EnablePlmQuery(long* place) override { return Report(L"EnablePlmQuery", place); }
  STDMETHODIMP PlmImportCurrent() override { return Record(L"PlmImportCurrent"); }
  STDMETHODIMP EnableImportCurrent(long* place) override { return Report(L"EnableImportCurrent", place); }
  STDMETHODIMP PlmLotimport() override { return Record(L"PlmLotimport"); }
  STDMETHODIMP EnableLotimport(long* place) override { return Report(L"EnableLotimport", place); }
  STDMETHODIMP PlmCreateMaterial() override { return Record(L"PlmCreateMaterial"); }
  STDMETHODIMP EnablePlmCreateMaterial(long* place) override {
    return Report(L"EnablePlmCreateMaterial", place);
  }
  STDMETHODIMP PlmMyTempMaterial() override { return Record(L"PlmMyTempMaterial"); }
  STDMETHODIMP EnablePlmMyTempMaterial(long* place) override {
    return Report(L"EnablePlmMyTempMaterial", place);
  }
  STDMETHODIMP PlmTaskManage() override { return Record(L"PlmTaskManage"); }
  STDMETHODIMP EnablePlmTaskManage(long* place) override { return Report(L"EnablePlmTaskManage", place); }
  STDMETHODIMP PlmMaterialBackFill() override { return Record(L"PlmMaterialBackFill"); }
  STDMETHODIMP EnablePlmMaterialBackFill(long* place) override {
    return Report(L"EnablePlmMaterialBackFill", place);
  }
  STDMETHODIMP PlmImportChangeItem() override { return Record(L"PlmImportChangeItem"); }
  STDMETHODIMP EnablePlmImportChangeItem(long* place) override {
    return Report(L"EnablePlmImportChangeItem", place);
  }

 private:
  HRESULT Record(const wchar_t* name) {
    called.append(name).append(L" ");
    if (raise) raise();
    return result;
  }
  HRESULT Report(const wchar_t* name, long* place) {
    if (!place) return E_POINTER;
    *place = status;
    return Record(name);
  }
};
