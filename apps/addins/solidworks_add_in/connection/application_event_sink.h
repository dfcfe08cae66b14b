/// @file The add-in's sink for the host's application events.
#pragma once

#include "base/com_pointers.h"

/// What the sink does on each event that it handles: nothing so far. The order is that of the sink's
/// table, whose rows are the methods' vtable slots.
struct IApplicationEventHandlers {
  virtual HRESULT STDMETHODCALLTYPE OnActiveDocChange() = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDocumentLoad(BSTR title, BSTR path) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnFileNew2(IDispatch* document, long type, BSTR template_name) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnActiveModelDocChange() = 0;
  virtual HRESULT STDMETHODCALLTYPE OnFileOpenPost(BSTR file_name) = 0;
};

/// An object of its own, so that a host that keeps it longer than the add-in holds nothing of the add-in.
class ApplicationEventSink : public IDispatch, private IApplicationEventHandlers {
 public:
  /// @param major of the host's type library, from which the parameters of an event are taken.
  explicit ApplicationEventSink(WORD major) : m_libraryMajor(major) {}
  virtual ~ApplicationEventSink() = default;

  /// IUnknown, IDispatch and the event interface; see ComObject.
  void* FindInterface(REFIID iid) noexcept;

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
  ITypeInfoPtr m_typeInfo;  // once it could be had
};

/// The advice of one sink at the host: made on connecting, taken back on disconnecting.
class ApplicationEventAdvice {
 public:
  /// Advises a new sink of the application events of `host`. A host without such events is let be.
  /// @param host_major the host's major version; below 14 the type library's version is taken for 0.
  /// @throws _com_error E_FAIL where a sink is advised already.
  void Advise(IUnknown* host, long host_major);

  /// Takes the sink back.
  /// @return S_OK; E_INVALIDARG where `host` is null; the result of the first call that failed. The sink
  ///         counts as not advised afterwards in every case.
  HRESULT Unadvise(IUnknown* host);

 private:
  static constexpr DWORD kNotAdvised = 0xFEFEFEFE;
  DWORD m_cookie = kNotAdvised;
};
