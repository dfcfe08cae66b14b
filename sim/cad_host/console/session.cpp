#include "session.h"

#include <algorithm>
#include <array>

#include "CStringHelper.h"
#include "exception_text.h"
#include "folded_journal.h"

namespace cad_host {
namespace {

constexpr const wchar_t* kIndent = L"    ";

// This command is not repeated in the transcript, because its output is there.
constexpr std::wstring_view kPrint = L"print ";

// Commands that a folded transcript leaves out: what they do shows elsewhere.
constexpr std::array<std::wstring_view, 3> kSilent = {L"answer ", L"expect ", L"picture "};

bool IsSilent(const std::wstring& command) {
  return std::any_of(kSilent.begin(), kSilent.end(),
                     [&](std::wstring_view verb) { return command.starts_with(verb); });
}

/// Each line of `text`, indented.
std::wstring Indented(const std::wstring& text) {
  std::wstring indented;
  std::size_t begin = 0;
  for (std::size_t end = 0; (end = text.find(L'\n', begin)) != std::wstring::npos; begin = end + 1) {
    indented += kIndent + text.substr(begin, end - begin + 1);
  }
  return indented;
}

}  // namespace

Session::Session(Host& host, std::ostream& transcript, Output output)
    : m_host(host), m_transcript(transcript), m_output(output), m_answers(host.GetJournal()) {}

void Session::Run(Command& command) {
  const bool silent = m_output == Output::kFolded && IsSilent(command.Text());
  if (!silent && !command.Text().starts_with(kPrint)) Write(L"> " + command.Text());
  const Handler handler = Find(Verbs(), command.Take(L"a command"), command);
  try {
    const MessageBoxAnswers::Listening listening(m_answers);
    (this->*handler)(command);
  } catch (...) {
    WriteJournal();
    const std::wstring message = TextOfException();
    const bool has_place = message.starts_with(command.Place());
    if (has_place) throw;
    command.Fail(message);
  }
  WriteJournal();
}

Session::Handler Session::Find(std::span<const Verb> verbs, const std::wstring& name,
                               const Command& command) {
  for (const Verb& verb : verbs) {
    if (name == verb.name) return verb.handler;
  }
  command.Fail(L"unknown command \"" + name + L"\"");
}

void Session::End() {
  {
    const MessageBoxAnswers::Listening listening(m_answers);
    while (!m_host.ConnectedAddIns().empty()) m_host.Disconnect(*m_host.ConnectedAddIns().back());
  }
  WriteJournal();
  if (m_leftOut > 0) {
    Write(L"(" + std::to_wstring(m_leftOut) + L" of " + std::to_wstring(m_written) +
          L" calls and events are not shown; --full shows all)");
  }
  const auto leftover = [this](const std::wstring& text) {
    ++m_failed;
    Write(L"FAILED: " + text);
  };
  for (const HeldReference& held : m_host.HeldReferences()) {
    leftover(L"still held from outside: " + held.object + L", " + std::to_wstring(held.count) + L" times");
  }
  for (const std::wstring& fault : m_host.GetFaults().Unused()) leftover(fault);
  if (m_answers.Left() > 0) {
    leftover(std::to_wstring(m_answers.Left()) + L" answers that no message box asked for");
  }
}

AddIn& Session::ConnectedAddIn(const Command& command) {
  if (m_host.ConnectedAddIns().empty()) command.Fail(L"no add-in is connected");
  return *m_host.ConnectedAddIns().back();
}

AddIn& Session::AddInNamed(const std::wstring& name, const Command& command) {
  for (const auto& add_in : m_host.ConnectedAddIns()) {
    if (add_in->entry.title == name || add_in->entry.clsid == name) return *add_in;
  }
  command.Fail(L"no add-in \"" + name + L"\" is connected");
}

Document& Session::ActiveDocument(const Command& command) {
  const auto document = m_host.ActiveDocument();
  if (!document) command.Fail(L"no document is open");
  return *document;
}

std::shared_ptr<Document> Session::FindDocument(Command& command) {
  const std::wstring name = command.Take(L"the name of an open document");
  auto document = m_host.FindDocument(name);
  if (!document) command.Fail(L"no open document \"" + name + L"\"");
  return document;
}

std::shared_ptr<Component> Session::TakeComponent(Command& command) {
  const Document& document = ActiveDocument(command);
  const std::wstring name = command.Take(L"a component");
  auto component = document.FindComponent(name);
  if (!component) command.Fail(document.Describe() + L" has no component \"" + name + L"\"");
  return component;
}

void Session::Check(const Command& command, bool met, const std::wstring& otherwise) {
  if (met) return;
  ++m_failed;
  Write(L"FAILED: " + command.Place() + L": " + command.Text() + L": " + otherwise);
}

void Session::Write(const std::wstring& text) {
  m_transcript << CStringHelper::UnicodeToUTF8(text) << "\n" << std::flush;
}

void Session::WriteJournal() {
  CollectEnableMethods();
  FoldedJournal journal;
  if (m_output == Output::kFolded) {
    journal = FoldJournal(m_host.GetJournal().Entries(), m_written, m_enableMethods);
  } else {
    journal.text = m_host.GetJournal().Text(m_written);
  }
  m_transcript << CStringHelper::UnicodeToUTF8(Indented(journal.text)) << std::flush;
  m_leftOut += journal.left_out;
  m_written = m_host.GetJournal().Entries().size();
}

void Session::CollectEnableMethods() {
  for (const auto& group : m_host.Groups()) {
    for (const CommandItem& item : group->items) m_enableMethods.insert(item.enable_method);
  }
}

Point TakePoint(Command& command) {
  if (!command.TakeIf(L"at")) return {};
  const double x = command.TakeNumber(L"x");
  const double y = command.TakeNumber(L"y");
  return {x, y, command.TakeNumber(L"z")};
}

}  // namespace cad_host
