// The commands that check an expectation.
#include "session.h"

namespace cad_host {

std::span<const Session::Verb> Session::Expectations() {
  static constexpr Verb kTable[] = {
      {L"enabled", &Session::ExpectEnabled},
      {L"disabled", &Session::ExpectDisabled},
      {L"active", &Session::ExpectActive},
      {L"journal", &Session::ExpectJournal},
      {L"no", &Session::ExpectNo},
      {L"property", &Session::ExpectProperty},
      {L"component", &Session::ExpectComponent},
  };
  return kTable;
}

// expect enabled ITEM
void Session::ExpectEnabled(Command& command) {
  const std::wstring item = command.Take(L"an item");
  command.ExpectEnd();
  Check(command, m_host.IsEnabled(ConnectedAddIn(command), item), L"it is greyed out");
}

// expect disabled ITEM
void Session::ExpectDisabled(Command& command) {
  const std::wstring item = command.Take(L"an item");
  command.ExpectEnd();
  Check(command, !m_host.IsEnabled(ConnectedAddIn(command), item), L"it is enabled");
}

// expect active NAME | expect active nothing
void Session::ExpectActive(Command& command) {
  const std::wstring name = command.Take(L"a document");
  command.ExpectEnd();
  const auto active = m_host.ActiveDocument();
  const bool met = name == L"nothing" ? !active : active && active == m_host.FindDocument(name);
  Check(command, met,
        !active ? L"no document is open"
                : (active->path.empty() ? active->title : active->path) + L" is active");
}

// expect journal TEXT
void Session::ExpectJournal(Command& command) {
  const std::wstring text = command.Take(L"a text");
  command.ExpectEnd();
  Check(command, m_host.GetJournal().Contains(text), L"no line contains it");
}

// expect no journal TEXT
void Session::ExpectNo(Command& command) {
  if (!command.TakeIf(L"journal")) command.Fail(L"\"expect no\" needs \"journal\"");
  const std::wstring text = command.Take(L"a text");
  command.ExpectEnd();
  Check(command, !m_host.GetJournal().Contains(text), L"a line contains it");
}

// expect property NAME = VALUE, as typed
void Session::ExpectProperty(Command& command) {
  const std::wstring name = command.Take(L"a property");
  if (!command.TakeIf(L"=")) command.Fail(L"= is missing");
  const std::wstring value = command.Take(L"a value");
  command.ExpectEnd();
  for (const CustomProperty& property : ActiveDocument(command).model.properties) {
    if (property.name == name) {
      return Check(command, property.text == value, L"it is \"" + property.text + L"\"");
    }
  }
  Check(command, false, L"there is no such property");
}

// expect component NAME revision N | expect component NAME suppressed
void Session::ExpectComponent(Command& command) {
  const std::wstring name = command.Take(L"a component");
  const bool suppressed = command.TakeIf(L"suppressed");
  if (!suppressed && !command.TakeIf(L"revision")) command.Fail(L"revision N or suppressed is missing");
  const long revision = suppressed ? 0 : command.TakeWholeNumber(L"a revision");
  command.ExpectEnd();
  const auto component = ActiveDocument(command).FindComponent(name);
  if (!component) return Check(command, false, L"there is no such component");
  const bool met =
      component->IsSuppressed() == suppressed && (suppressed || component->loaded_revision == revision);
  Check(command, met,
        component->IsSuppressed()
            ? L"it is suppressed"
            : L"revision " + std::to_wstring(component->loaded_revision) + L" is loaded");
}

}  // namespace cad_host
