#include "event_source.h"

#include <algorithm>
#include <string>

#include "argument.h"
#include "cad_host/host_error.h"

namespace cad_host {

DWORD ApplicationEvents::Advise(const IDispatchPtr& sink) {
  m_sinks[++m_lastCookie] = sink;
  return m_lastCookie;
}

void ApplicationEvents::Fire(const ApplicationEvent& event, std::vector<_variant_t> arguments) {
  std::wstring text;
  for (const _variant_t& argument : arguments) {
    text += (text.empty() ? L"" : L", ") + TextOf(static_cast<const VARIANT&>(argument));
  }
  const std::size_t entry = m_journal.Begin(JournalEntry::Kind::kEvent, event.name, text);
  std::reverse(arguments.begin(), arguments.end());  // the last argument comes first
  DISPPARAMS parameters{};
  parameters.rgvarg = arguments.data();
  parameters.cArgs = static_cast<UINT>(arguments.size());
  HRESULT first_failure = S_OK;
  const auto sinks = m_sinks;  // a sink may unadvise itself
  for (const auto& [cookie, sink] : sinks) {
    _variant_t result;
    const HRESULT called = sink->Invoke(event.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                        &result, nullptr, nullptr);
    if (FAILED(called)) {
      m_journal.Note(L"sink " + std::to_wstring(cookie) + L" failed: " + ResultText(called));
      if (SUCCEEDED(first_failure)) first_failure = called;
    }
  }
  m_journal.End(entry, first_failure, L"");
}

}  // namespace cad_host
