#include <windows.h>

#include "host_commands.h"

#include <algorithm>
#include <optional>

#include "dialogs.h"
#include "file_dialogs.h"
#include "host_command_table.h"
#include "menu_bar.h"

namespace cad_host {
namespace {

std::wstring NameOf(const Document& document) {
  return document.path.empty() ? document.title : document.path;
}

std::optional<AddInEntry> EntryOf(UINT id) {
  const auto registered = Host::RegisteredAddIns();
  const UINT place = id - kFirstAddInEntry;
  if (id < kFirstAddInEntry || place >= registered.size()) return std::nullopt;
  return registered[place];
}

const NamedQuirk* QuirkOf(UINT id) {
  const auto all = Quirks::All();
  const UINT place = id - kFirstQuirkEntry;
  return id < kFirstQuirkEntry || place >= all.size() ? nullptr : &all[place];
}

}  // namespace

bool HostCommands::Knows(UINT id) const {
  return EntryOf(id) || QuirkOf(id) ||
         std::ranges::any_of(kHostCommands, [&](const HostCommand& known) { return known.id == id; });
}

ItemState HostCommands::StateOf(UINT id) const {
  if (const auto entry = EntryOf(id)) return {.enabled = true, .pressed = IsConnected(*entry)};
  const NamedQuirk* const quirk = QuirkOf(id);
  if (quirk) return {.enabled = true, .pressed = m_desk.host.GetQuirks().IsOn(quirk->quirk)};
  return {.enabled = IsEnabled(id), .pressed = false};
}

bool HostCommands::IsConnected(const AddInEntry& entry) const {
  return std::ranges::any_of(m_desk.host.ConnectedAddIns(),
                             [&](const auto& add_in) { return add_in->entry.clsid == entry.clsid; });
}

bool HostCommands::IsEnabled(UINT id) const {
  const auto document = m_desk.host.ActiveDocument();
  switch (id) {
    case IDS_SAVE:
    case IDS_SAVE_AS:
    case IDS_CLOSE:
    case IDS_ADD_PROPERTY:
    case IDS_SELECT_FACE:
      return document != nullptr;
    case IDS_SELECT_NOTHING:
      return document && !document->selection.empty();
    case IDS_INSERT_COMPONENT:
      return document && document->Type() == swDocASSEMBLY;
    case IDS_RECORD:
      return !m_desk.actions.IsRecording();
    case IDS_STOP_RECORDING:
      return m_desk.actions.IsRecording();
    default:
      return true;
  }
}

void HostCommands::Run(UINT id) {
  if (m_desk.actions.IsBusy() || !StateOf(id).enabled) {
    MessageBeep(MB_OK);
    return;
  }
  if (const auto entry = EntryOf(id)) return Toggle(*entry);
  if (const NamedQuirk* const quirk = QuirkOf(id)) return Toggle(*quirk);
  RunFile(id);
  RunTool(id);
}

void HostCommands::RunFile(UINT id) {
  Actions& actions = m_desk.actions;
  switch (id) {
    case IDS_NEW_PART:
      actions.Do({L"new", L"part"});
      return;
    case IDS_NEW_ASSEMBLY:
      actions.Do({L"new", L"assembly"});
      return;
    case IDS_NEW_DRAWING:
      actions.Do({L"new", L"drawing"});
      return;
    case IDS_OPEN:
      return Open();
    case IDS_SAVE:
      Save(*m_desk.host.ActiveDocument());
      return;
    case IDS_SAVE_AS:
      SaveAs(*m_desk.host.ActiveDocument());
      return;
    case IDS_CLOSE:
      Close(m_desk.host.ActiveDocument());
      return;
    case IDS_EXIT:
      PostMessageW(m_surroundings.owner, WM_CLOSE, 0, 0);
      return;
    default:
      return;
  }
}

void HostCommands::RunTool(UINT id) {
  Actions& actions = m_desk.actions;
  const window::Texts& texts = m_desk.texts;
  switch (id) {
    case IDS_INSERT_COMPONENT:
      return Insert();
    case IDS_ADD_PROPERTY:
      return m_surroundings.properties->Add();
    case IDS_SELECT_FACE:
      actions.Do(m_surroundings.pick_point->SelectFaceWords());
      return;
    case IDS_SELECT_NOTHING:
      actions.Do({L"select", L"nothing"});
      return;
    case IDS_RECORD:
      if (const auto path = AskForScript(m_surroundings.owner, texts, true)) actions.StartRecording(*path);
      return m_surroundings.update();
    case IDS_STOP_RECORDING:
      actions.StopRecording();
      return m_surroundings.update();
    case IDS_RUN_SCRIPT:
      if (const auto path = AskForScript(m_surroundings.owner, texts, false))
        m_surroundings.play_script(*path);
      return;
    case IDS_FAULT:
      if (const auto line =
              AskForLine(m_surroundings.owner, texts, PlainText(texts(IDS_FAULT)), texts(IDS_FAULT_PROMPT))) {
        actions.DoRest(L"fault", *line);
      }
      return;
    case IDS_REFRESH:
      return m_surroundings.update();
    case IDS_ABOUT:
      return About();
    default:
      return;
  }
}

void HostCommands::Toggle(const AddInEntry& entry) {
  m_desk.actions.Do({IsConnected(entry) ? L"disconnect" : L"connect", entry.title});
}

void HostCommands::Toggle(const NamedQuirk& quirk) {
  m_desk.actions.Do({L"quirk", quirk.name, m_desk.host.GetQuirks().IsOn(quirk.quirk) ? L"off" : L"on"});
}

void HostCommands::Open() {
  if (const auto path = AskForModelToOpen(m_surroundings.owner, m_desk.texts)) {
    m_desk.actions.Do({L"open", *path});
  }
}

void HostCommands::Insert() {
  const auto path = AskForModelToOpen(m_surroundings.owner, m_desk.texts);
  if (!path) return;
  std::vector<std::wstring> words{L"insert", *path};
  for (const std::wstring& word : m_surroundings.pick_point->PointWords()) words.push_back(word);
  m_desk.actions.Do(words);
}

bool HostCommands::Save(const Document& document) {
  return document.path.empty() ? SaveAs(document) : m_desk.actions.Do({L"save"});
}

bool HostCommands::SaveAs(const Document& document) {
  const auto path = AskForModelToSave(m_surroundings.owner, m_desk.texts, document);
  return path && m_desk.actions.Do({L"save", *path});
}

bool HostCommands::Close(const std::shared_ptr<Document>& document) {
  if (m_desk.actions.IsBusy() || !OfferToSave(*document)) return false;
  return m_desk.actions.Do({L"close", NameOf(*document)});
}

bool HostCommands::OfferToSave() {
  const auto open = m_desk.host.OpenDocuments();
  return std::ranges::all_of(open, [this](const auto& document) { return OfferToSave(*document); });
}

bool HostCommands::OfferToSave(const Document& document) {
  if (!document.changed) return true;
  const int answer =
      MessageBoxW(m_surroundings.owner, m_desk.texts(IDS_SAVE_QUESTION, document.title).c_str(),
                  m_desk.texts(IDS_TITLE).c_str(), MB_YESNOCANCEL | MB_ICONQUESTION);
  if (answer != IDYES) return answer == IDNO;
  const auto active = m_desk.host.ActiveDocument();
  if (active.get() != &document && !m_desk.actions.Do({L"activate", NameOf(document)})) return false;
  return Save(document);
}

void HostCommands::About() const {
  MessageBoxW(m_surroundings.owner, m_desk.texts(IDS_ABOUT_TEXT, m_desk.host.Revision()).c_str(),
              m_desk.texts(IDS_TITLE).c_str(), MB_OK | MB_ICONINFORMATION);
}

}  // namespace cad_host
