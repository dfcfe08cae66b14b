/// @file The application's events and their sinks.
#pragma once

#include <windows.h>

#include <comdef.h>

#include <map>
#include <vector>

#include "cad_host/journal.h"
#include "host/application_events.h"

namespace cad_host {

struct ApplicationEvent {
  DISPID id;
  const wchar_t* name;
};

// The events that the host raises.
inline constexpr ApplicationEvent kActiveDocChange = {host::application_event::kActiveDocChange,
                                                      L"ActiveDocChangeNotify"};
inline constexpr ApplicationEvent kActiveModelDocChange = {host::application_event::kActiveModelDocChange,
                                                           L"ActiveModelDocChangeNotify"};
inline constexpr ApplicationEvent kDocumentLoad = {host::application_event::kDocumentLoad,
                                                   L"DocumentLoadNotify"};
inline constexpr ApplicationEvent kFileNew2 = {host::application_event::kFileNew2, L"FileNewNotify2"};
inline constexpr ApplicationEvent kFileOpenPre = {21, L"FileOpenPreNotify"};
inline constexpr ApplicationEvent kFileOpenPost = {host::application_event::kFileOpenPost,
                                                   L"FileOpenPostNotify"};
inline constexpr ApplicationEvent kFileClose = {host::application_event::kFileClose, L"FileCloseNotify"};

class ApplicationEvents {
 public:
  explicit ApplicationEvents(Journal& journal) : m_journal(journal) {}

  /// @return the cookie for Unadvise; never 0.
  DWORD Advise(const IDispatchPtr& sink);

  /// @return false if no sink has this cookie.
  bool Unadvise(DWORD cookie) { return m_sinks.erase(cookie) > 0; }

  const std::map<DWORD, IDispatchPtr>& Sinks() const { return m_sinks; }

  /// Calls every sink with `arguments`. A sink that fails is noted in the journal, and the first failure is
  /// the result of the event's entry; the others are still called.
  void Fire(const ApplicationEvent& event, std::vector<_variant_t> arguments);

 private:
  Journal& m_journal;
  std::map<DWORD, IDispatchPtr> m_sinks;
  DWORD m_lastCookie = 0;
};

}  // namespace cad_host
