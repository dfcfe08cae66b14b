#include "add_ins.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "argument.h"
#include "cad_host/host_error.h"

namespace cad_host {
namespace {

/// A journal entry for a call of the add-in. It ends when the call returns or throws.
class OutgoingCall {
 public:
  OutgoingCall(Journal& journal, const std::wstring& method, const std::wstring& arguments)
      : m_journal(journal), m_entry(journal.Begin(JournalEntry::Kind::kCallee, method, arguments)) {}
  OutgoingCall(const OutgoingCall&) = delete;
  OutgoingCall& operator=(const OutgoingCall&) = delete;
  ~OutgoingCall() { m_journal.End(m_entry, m_result, m_ended ? m_results : L"left by an exception"); }

  void End(HRESULT result, std::wstring results = {}) {
    m_ended = true;
    m_result = result;
    m_results = std::move(results);
  }

 private:
  Journal& m_journal;
  std::size_t m_entry;
  bool m_ended = false;
  HRESULT m_result = E_UNEXPECTED;
  std::wstring m_results;
};

/// Exception details of a call, freed at the end.
struct ExceptionDetails : EXCEPINFO {
  ExceptionDetails() : EXCEPINFO{} {}
  ExceptionDetails(const ExceptionDetails&) = delete;
  ExceptionDetails& operator=(const ExceptionDetails&) = delete;
  ~ExceptionDetails() {
    for (BSTR text : {bstrSource, bstrDescription, bstrHelpFile}) SysFreeString(text);
  }

  HRESULT Code() const { return scode ? scode : wCode ? MAKE_HRESULT(1, FACILITY_ITF, wCode) : S_OK; }
};

HRESULT ResolveName(IDispatch* object, const std::wstring& name, DISPID& id) {
  auto* text = const_cast<wchar_t*>(name.c_str());
  return object ? object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id) : E_POINTER;
}

HRESULT InvokeMethod(IDispatch* object, DISPID id, DISPPARAMS parameters, VARIANT* result,
                     ExceptionDetails& exception) {
  UINT bad_argument = 0;
  return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result, &exception,
                        &bad_argument);
}

/// What the number of an enable method means.
ItemState Meaning(long status) {
  return {.enabled = status == 1 || status == 3, .pressed = status == 2 || status == 3};
}

// The number before the call; it stays if the enable method does not store one.
constexpr long kNoStatus = LONG_MIN;

/// Calls an enable method. It stores its number in an argument, if it is offered one and takes it, or returns
/// it.
HRESULT AskStatus(IDispatch* object, DISPID id, bool with_argument, long& status,
                  ExceptionDetails& exception) {
  status = kNoStatus;
  VARIANTARG place{};
  place.vt = VT_BYREF | VT_I4;
  place.plVal = &status;
  _variant_t answer;
  HRESULT result = DISP_E_BADPARAMCOUNT;
  if (with_argument) result = InvokeMethod(object, id, {&place, nullptr, 1, 0}, &answer, exception);
  if (result == DISP_E_BADPARAMCOUNT) result = InvokeMethod(object, id, {}, &answer, exception);
  if (SUCCEEDED(result) && status == kNoStatus && SUCCEEDED(VariantChangeType(&answer, &answer, 0, VT_I4))) {
    status = answer.lVal;
  }
  return result;
}

std::wstring DetailsOf(const ExceptionDetails& exception) {
  return ResultText(exception.Code()) + L", " + TextOf(exception.bstrSource) + L", " +
         TextOf(exception.bstrDescription);
}

}  // namespace

AddIn& AddIns::Connect(const ISwAddinPtr& object, const AddInEntry& entry, IDispatch* application) {
  m_addIns.push_back(std::make_unique<AddIn>());
  AddIn& add_in = *m_addIns.back();
  add_in.entry = entry;
  add_in.cookie = ++m_lastCookie;
  add_in.object = object;
  add_in.commands = std::make_shared<AddInCommands>(AddInCommands{add_in.Key()});
  try {
    VARIANT_BOOL connected = VARIANT_FALSE;
    OutgoingCall call(m_services->journal, L"ISwAddin::ConnectToSW", std::to_wstring(add_in.cookie));
    const HRESULT result = add_in.object->ConnectToSW(application, add_in.cookie, &connected);
    call.End(result, TextOf(connected));
    if (FAILED(result) || !connected) {
      throw HostError(entry.title + L" did not connect: ConnectToSW returned " + ResultText(result) + L", " +
                          TextOf(connected),
                      result);
    }
  } catch (...) {
    Remove(add_in);
    throw;
  }
  return add_in;
}

bool AddIns::Disconnect(AddIn& add_in) {
  VARIANT_BOOL disconnected = VARIANT_FALSE;
  try {
    OutgoingCall call(m_services->journal, L"ISwAddin::DisconnectFromSW", L"");
    const HRESULT result = add_in.object->DisconnectFromSW(&disconnected);
    call.End(result, TextOf(disconnected));
  } catch (...) {
    Remove(add_in);
    throw;
  }
  Remove(add_in);
  return disconnected;
}

void AddIns::Remove(const AddIn& add_in) {
  std::erase_if(m_addIns, [&](const auto& known) { return known.get() == &add_in; });
  CoFreeUnusedLibraries();
}

AddIn* AddIns::Find(long cookie) const {
  const auto found = std::find_if(m_addIns.begin(), m_addIns.end(),
                                  [&](const auto& add_in) { return add_in->cookie == cookie; });
  return found == m_addIns.end() ? nullptr : found->get();
}

ItemState AddIns::StateOf(AddIn& add_in, const std::wstring& method) {
  if (method.empty()) return {};
  DISPID id = DISPID_UNKNOWN;
  const HRESULT resolved = ResolveName(add_in.callbacks, method, id);
  if (FAILED(resolved)) {
    m_services->journal.Note(L"enable method " + method + L" not found: " + ResultText(resolved));
    return {};
  }
  OutgoingCall call(m_services->journal, method, L"");
  long status = kNoStatus;
  ExceptionDetails exception;
  const bool with_argument = m_services->quirks.IsOn(Quirk::kEnableArgument);
  const HRESULT result = AskStatus(add_in.callbacks, id, with_argument, status, exception);
  call.End(result, result == DISP_E_EXCEPTION ? DetailsOf(exception) : std::to_wstring(status));
  return SUCCEEDED(result) ? Meaning(status) : ItemState{.enabled = false};
}

PickResult AddIns::Call(AddIn& add_in, const std::wstring& method) {
  PickResult picked;
  picked.enabled = true;
  DISPID id = DISPID_UNKNOWN;
  picked.result = ResolveName(add_in.callbacks, method, id);
  if (FAILED(picked.result)) {
    m_services->journal.Note(L"callback " + method + L" not found: " + ResultText(picked.result));
    return picked;
  }
  OutgoingCall call(m_services->journal, method, L"");
  ExceptionDetails exception;
  picked.result = InvokeMethod(add_in.callbacks, id, {}, nullptr, exception);
  if (picked.result == DISP_E_EXCEPTION) {
    picked.code = exception.Code();
    picked.source = Text(exception.bstrSource);
    picked.description = Text(exception.bstrDescription);
    call.End(picked.result, DetailsOf(exception));
  } else {
    call.End(picked.result);
  }
  return picked;
}

}  // namespace cad_host
