/// @file Runs the commands of a script in a host.
#pragma once

#include <functional>
#include <ostream>
#include <set>
#include <span>
#include <string>
#include <utility>

#include "cad_host/host.h"
#include "message_box_answers.h"
#include "script.h"

namespace cad_host {

/// How much a session writes.
enum class Output {
  kFull,    ///< every command and the whole journal
  kFolded,  ///< the story: the journal as FoldJournal shortens it, no answers, no expectations that are met
};

/// Runs one command after the other and writes the command and the journal of the host.
class Session {
 public:
  Session(Host& host, std::ostream& transcript, Output output = Output::kFull);

  /// @throws HostError naming the file and the line if the command is unknown, incomplete or fails. An
  ///         expectation that fails is only counted and written; the session goes on.
  void Run(Command& command);

  /// Disconnects all add-ins, writes how much of the journal was left out, and counts as failed expectations:
  /// references that add-ins did not release, faults that never happened, answers that no message box used.
  void End();

  int FailedExpectations() const { return m_failed; }

  /// From now on, calls `action` with the name of each button that a person presses in a message box.
  void OnAnswer(std::function<void(const std::wstring& button)> action) {
    m_answers.OnAnswer(std::move(action));
  }

  /// From now on, message boxes that the script answers stay for `milliseconds`.
  void AnswerAfter(unsigned milliseconds) { m_answers.AnswerAfter(milliseconds); }

  /// From now on, calls `action` with the names of the pictures that the script wants. Without it, none is
  /// taken.
  void OnPicture(std::function<void(const std::wstring& name)> action) {
    m_answers.OnPicture(action);
    m_onPicture = std::move(action);
  }

 private:
  using Handler = void (Session::*)(Command&);
  struct Verb {
    const wchar_t* name;
    Handler handler;
  };

  static std::span<const Verb> Verbs();
  static std::span<const Verb> Expectations();

  /// @throws HostError with the file, the line and `name` if it is not in the table.
  static Handler Find(std::span<const Verb> verbs, const std::wstring& name, const Command& command);

  // In session_verbs.cpp.
  void Connect(Command& command);
  void Disconnect(Command& command);
  void Pick(Command& command);
  void Open(Command& command);
  void New(Command& command);
  void Save(Command& command);
  void Activate(Command& command);
  void Close(Command& command);
  void Insert(Command& command);
  void Suppress(Command& command);
  void Unsuppress(Command& command);
  void Select(Command& command);
  void SetProperty(Command& command);
  void Remove(Command& command);
  void SetQuantity(Command& command);
  void Fault(Command& command);
  void SetQuirk(Command& command);
  void ShowQuirks(Command& command);
  void Answer(Command& command);
  void TakePicture(Command& command);
  void ShowProperties(Command& command);
  void ShowComponents(Command& command);
  void ShowItems(Command& command);
  void ShowTabs(Command& command);
  void Print(Command& command);
  void Expect(Command& command);

  // In session_expectations.cpp.
  void ExpectEnabled(Command& command);
  void ExpectDisabled(Command& command);
  void ExpectActive(Command& command);
  void ExpectJournal(Command& command);
  void ExpectNo(Command& command);
  void ExpectProperty(Command& command);
  void ExpectComponent(Command& command);

  AddIn& ConnectedAddIn(const Command& command);
  AddIn& AddInNamed(const std::wstring& name, const Command& command);
  Document& ActiveDocument(const Command& command);
  std::shared_ptr<Document> FindDocument(Command& command);
  std::shared_ptr<Component> TakeComponent(Command& command);
  void Check(const Command& command, bool met, const std::wstring& otherwise);
  void Write(const std::wstring& text);
  void WriteJournal();
  void CollectEnableMethods();

  Host& m_host;
  std::ostream& m_transcript;
  const Output m_output;
  MessageBoxAnswers m_answers;
  std::function<void(const std::wstring& name)> m_onPicture;
  std::set<std::wstring> m_enableMethods;  // also of items that were removed
  std::size_t m_written = 0;               // journal entries in the transcript
  std::size_t m_leftOut = 0;               // of these, entries that a folded transcript does not show
  int m_failed = 0;
};

/// The optional "at X Y Z" of a command.
Point TakePoint(Command& command);

}  // namespace cad_host
