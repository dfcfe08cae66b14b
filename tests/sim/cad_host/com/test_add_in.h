/// @file An add-in within the test program.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/application.h"
#include "host/application_events.h"

/// Its methods are functions of the test, called by name. Lives in the test; its references are counted.
class TestAddIn : public ISwAddin, public IDispatch {
 public:
  /// A method: gets the call's arguments, last first, and the pointer for its result.
  using Method = std::function<HRESULT(DISPPARAMS& arguments, VARIANT* result, EXCEPINFO* exception)>;

  std::function<HRESULT(IDispatch* host, long cookie, VARIANT_BOOL* connected)> on_connect;
  std::function<HRESULT(VARIANT_BOOL* disconnected)> on_disconnect;
  std::map<std::wstring, Method> methods;

  struct Event {
    DISPID id;
    std::vector<VARTYPE> types;       ///< of the arguments, in their order
    std::vector<std::wstring> texts;  ///< of the arguments that are text
    bool operator==(const Event&) const = default;
  };
  std::vector<Event> events;    ///< received as a sink
  HRESULT event_result = S_OK;  ///< what it returns as a sink

  ULONG References() const { return m_references; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++m_references; }
  STDMETHODIMP_(ULONG) Release() override { return --m_references; }

  STDMETHODIMP ConnectToSW(IDispatch* host, long cookie, VARIANT_BOOL* connected) override;
  STDMETHODIMP DisconnectFromSW(VARIANT_BOOL* disconnected) override;

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override;

 private:
  ULONG m_references = 0;
  std::vector<std::wstring> m_names;  // resolved names; the id is computed from the index
};

/// The application as an add-in gets it.
inline ISldWorksPtr ApplicationOf(IDispatch* host) { return host; }
