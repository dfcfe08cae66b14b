/// @file The add-in's sink for the host's application events.
#pragma once

#include "base/com_pointers.h"
#include "module/com_object.h"

/// The sink's handlers, which do nothing so far. They must be in the order of kHandledEvents, because the
/// index of an event there is the vtable slot of its handler.
struct IApplicationEventHandlers {
  virtual HRESULT STDMETHODCALLTYPE OnActiveDocChange() = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDocumentLoad(BSTR title, BSTR path) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnFileNew2(IDispatch* document, long type, BSTR template_name) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnActiveModelDocChange() = 0;
  virtual HRESULT STDMETHODCALLTYPE OnFileOpenPost(BSTR file_name) = 0;
};

/// A separate object, so that a host that keeps it longer than the add-in does not refer to the add-in.
class ApplicationEventSink : public IDispatch, private IApplicationEventHandlers {
 public:
  /// @param major the major version of the host's type library, which describes the parameters of events.
  explicit ApplicationEventSink(WORD major) : m_libraryMajor(major) {}
  virtual ~ApplicationEventSink() = default;

  using Interfaces = InterfaceList<IDispatch>;

  /// The event interface has the methods of IDispatch; see ComObject.
  static REFIID Canonical(REFIID iid) noexcept;

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }

  /// Calls the handler of the event `id`.
  /// @return S_OK for an event that is not handled or not in the type information; E_FAIL for a call with
  ///         more than eight arguments or a named argument at position 8 or later.
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* bad_argument) override;

 private:
  STDMETHODIMP OnActiveDocChange() override { return S_OK; }
  STDMETHODIMP OnDocumentLoad(BSTR, BSTR) override { return S_OK; }
  STDMETHODIMP OnFileNew2(IDispatch*, long, BSTR) override { return S_OK; }
  STDMETHODIMP OnActiveModelDocChange() override { return S_OK; }
  STDMETHODIMP OnFileOpenPost(BSTR) override { return S_OK; }

  ITypeInfo* EventTypeInfo(LCID locale);

  WORD m_libraryMajor;
  ITypeInfoPtr m_typeInfo;  // null until it could be loaded
};

/// The connection of one sink to the host: advised on connecting, unadvised on disconnecting.
class ApplicationEventAdvice {
 public:
  /// Advises a new sink of the application events of `host`. Does nothing if the host has no such events.
  /// @param host_major the host's major version; below 14, version 0 of the type library is used.
  /// @throws _com_error E_FAIL if a sink is advised already.
  void Advise(IUnknown* host, long host_major);

  /// Unadvises the sink.
  /// @return S_OK; E_INVALIDARG if `host` is null; the result of the first call that failed. In every case
  ///         the sink counts as not advised afterwards.
  HRESULT Unadvise(IUnknown* host);

 private:
  static constexpr DWORD kNotAdvised = 0xFEFEFEFE;
  DWORD m_cookie = kNotAdvised;
};
