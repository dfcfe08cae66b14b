/// @file An add-in that records the calls of its methods.
#pragma once

#include <string>

#include "add_in_methods.h"
#include "module/dispatch.h"

/// Dispatches like the add-in; every method records its name, then throws or returns what the test has set.
/// References are not counted, because the test owns the object.
class RecordingAddIn : public UniformAddIn {
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

 private:
  HRESULT OnCommand(const wchar_t* name) override {
    called.append(name).append(L" ");
    if (raise) raise();
    return result;
  }
  HRESULT OnEnable(const wchar_t* name, long* place) override {
    if (!place) return E_POINTER;
    *place = status;
    return OnCommand(name);
  }
};
