#include "application_event_sink.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "connection_failure.h"
#include "host/application_events.h"

namespace {

constexpr long kFirstMajorWithTypeLibraryVersion = 14;
constexpr UINT kMaximumArguments = 8;

/// The events that are handled, in the order of the handlers' vtable slots.
constexpr DISPID kHandledEvents[] = {
    host::application_event::kActiveDocChange, host::application_event::kDocumentLoad,
    host::application_event::kFileNew2,        host::application_event::kActiveModelDocChange,
    host::application_event::kFileOpenPost,
};

using ParameterTypes = std::array<VARTYPE, kMaximumArguments>;

/// A function's description. The destructor returns it to its type information.
class FunctionDescription {
 public:
  FunctionDescription(ITypeInfo* info, DISPID id) : m_info(info) {
    TYPEATTR* attributes = nullptr;
    if (FAILED(m_info->GetTypeAttr(&attributes))) return;
    for (UINT index = 0; index < attributes->cFuncs && !m_function; ++index) {
      if (FAILED(m_info->GetFuncDesc(index, &m_function))) break;
      if (m_function->memid != id) Release();
    }
    m_info->ReleaseTypeAttr(attributes);
  }
  FunctionDescription(const FunctionDescription&) = delete;
  FunctionDescription& operator=(const FunctionDescription&) = delete;
  ~FunctionDescription() { Release(); }

  const FUNCDESC* operator->() const { return m_function; }
  explicit operator bool() const { return m_function != nullptr; }

 private:
  void Release() {
    if (m_function) m_info->ReleaseFuncDesc(m_function);
    m_function = nullptr;
  }

  ITypeInfo* m_info;
  FUNCDESC* m_function = nullptr;
};

/// Puts the arguments of a call in the order of the parameters.
/// @return E_FAIL if a position is beyond the eighth.
HRESULT OrderArguments(const DISPPARAMS& call, std::array<VARIANTARG*, kMaximumArguments>& ordered) {
  if (call.cArgs > kMaximumArguments) return E_FAIL;
  for (UINT index = 0; index < call.cArgs; ++index) {
    const UINT position =
        index < call.cNamedArgs ? static_cast<UINT>(call.rgdispidNamedArgs[index]) : call.cArgs - index - 1;
    if (position >= kMaximumArguments) return E_FAIL;
    ordered[position] = &call.rgvarg[index];
  }
  return S_OK;
}

/// The handlers as the system calls them: with the types that the type information names, and not built to
/// pass an exception on.
class CalledHandlers final : public IApplicationEventHandlers {
 public:
  explicit CalledHandlers(IApplicationEventHandlers& target) : m_target(target) {}

  STDMETHODIMP OnActiveDocChange() override {
    return EndExceptions(L"OnActiveDocChange", [&] { return m_target.OnActiveDocChange(); });
  }
  STDMETHODIMP OnDocumentLoad(BSTR title, BSTR path) override {
    return EndExceptions(L"OnDocumentLoad", [&] { return m_target.OnDocumentLoad(title, path); });
  }
  STDMETHODIMP OnFileNew2(IDispatch* document, long type, BSTR template_name) override {
    return EndExceptions(L"OnFileNew2", [&] { return m_target.OnFileNew2(document, type, template_name); });
  }
  STDMETHODIMP OnActiveModelDocChange() override {
    return EndExceptions(L"OnActiveModelDocChange", [&] { return m_target.OnActiveModelDocChange(); });
  }
  STDMETHODIMP OnFileOpenPost(BSTR file_name) override {
    return EndExceptions(L"OnFileOpenPost", [&] { return m_target.OnFileOpenPost(file_name); });
  }

 private:
  IApplicationEventHandlers& m_target;
};

IConnectionPointPtr FindEvents(IUnknown* host, HRESULT& result) {
  IConnectionPointContainerPtr container;
  IConnectionPointPtr point;
  result = host->QueryInterface(IID_PPV_ARGS(&container));
  if (FAILED(result)) return point;
  result = container ? container->FindConnectionPoint(host::kApplicationEventsId, &point) : E_POINTER;
  return point;
}

}  // namespace

REFIID ApplicationEventSink::Canonical(REFIID iid) noexcept {
  return iid == host::kApplicationEventsId ? IID_IDispatch : iid;
}

STDMETHODIMP ApplicationEventSink::Invoke(DISPID id, REFIID, LCID locale, WORD, DISPPARAMS* parameters,
                                          VARIANT* result, EXCEPINFO*, UINT*) {
  const auto handled = std::find(std::begin(kHandledEvents), std::end(kHandledEvents), id);
  if (handled == std::end(kHandledEvents)) return S_OK;
  ITypeInfo* const info = EventTypeInfo(locale);
  if (!info) return S_OK;
  const FunctionDescription function(info, id);
  if (!function) return S_OK;

  std::array<VARIANTARG*, kMaximumArguments> arguments{};
  const HRESULT ordered = parameters ? OrderArguments(*parameters, arguments) : E_INVALIDARG;
  if (FAILED(ordered)) return ordered;
  const UINT count = static_cast<UINT>(function->cParams);
  if (count > kMaximumArguments) return E_FAIL;
  ParameterTypes types{};
  for (UINT index = 0; index < count; ++index) {
    if (!arguments[index]) return DISP_E_PARAMNOTFOUND;
    types[index] = function->lprgelemdescParam[index].tdesc.vt;
  }
  const auto slot = static_cast<ULONG_PTR>(handled - std::begin(kHandledEvents)) * sizeof(void*);
  CalledHandlers handlers(*this);
  VARIANT unwanted;
  VARIANT& answer = result ? *result : unwanted;
  VariantInit(&answer);
  return DispCallFunc(static_cast<IApplicationEventHandlers*>(&handlers), slot, CC_STDCALL, VT_I4, count,
                      types.data(), arguments.data(), &answer);
}

ITypeInfo* ApplicationEventSink::EventTypeInfo(LCID locale) {
  if (!m_typeInfo) {
    ITypeLibPtr library;
    if (SUCCEEDED(LoadRegTypeLib(host::kTypeLibraryId, m_libraryMajor, 0, locale, &library))) {
      library->GetTypeInfoOfGuid(host::kApplicationEventsId, &m_typeInfo);
    }
  }
  return m_typeInfo;
}

void ApplicationEventAdvice::Advise(IUnknown* host, long host_major) {
  if (m_cookie != kNotAdvised) RaiseFailure(E_FAIL, L"the add-in is connected already");
  if (!host) return;
  const auto major = static_cast<WORD>(host_major >= kFirstMajorWithTypeLibraryVersion ? host_major : 0);
  HRESULT result = S_OK;
  const IConnectionPointPtr events = FindEvents(host, result);
  if (FAILED(result) || !events) return;
  IDispatchPtr sink;
  if (FAILED(CreateComObject<ApplicationEventSink>(IID_PPV_ARGS(&sink), major))) return;
  DWORD cookie = 0;
  if (SUCCEEDED(events->Advise(sink, &cookie))) m_cookie = cookie;
}

HRESULT ApplicationEventAdvice::Unadvise(IUnknown* host) {
  HRESULT result = E_INVALIDARG;
  if (host) {
    const IConnectionPointPtr events = FindEvents(host, result);
    if (SUCCEEDED(result)) result = events ? events->Unadvise(m_cookie) : E_POINTER;
  }
  m_cookie = kNotAdvised;
  return result;
}
