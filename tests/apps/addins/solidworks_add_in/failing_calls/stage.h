/// @file The add-in with everything around it that a person, the host and the PLM client do in a sweep.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "block_ledger.h"
#include "cad_host/host.h"
#include "environment.h"
#include "import_gate.h"
#include "module/add_in_dll.h"
#include "plm_client/client.h"
#include "plm_client/script.h"
#include "temp_folder.h"

using Texts = std::vector<std::wstring>;

/// The real DLL in the simulated host, with the simulated PLM client and files. Message boxes are answered
/// with OK at once, without windows.
class Stage {
 public:
  Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;
  ~Stage();

  ImportGate& Imports() const { return *m_imports; }
  BlockLedger& Blocks() const { return *m_blocks; }
  cad_host::Host& GetHost() const { return *m_host; }
  const AddInDll& Dll() const { return *m_dll; }

  // What a scenario starts with.

  /// Closes all documents and gives every model file the content that it had first.
  void PutModelsBack();
  /// Connects if the add-in is not connected, and logs in if nobody is.
  void BeConnected();
  void BeLoggedIn();
  /// Logs out if somebody is logged in. The PLM client then ends the connection.
  void BeLoggedOut();
  /// Disconnects if the add-in is connected, and starts a new host without anything from before.
  void BeDisconnected();
  /// Unloads the DLL, which must let go of everything, removes its log, and loads it again.
  /// @throws std::runtime_error if the DLL stays loaded.
  void Reload();
  /// New connections go to the PLM client's pipe, or to one that nobody serves.
  void UsePipe(bool is_served);
  /// New connections go to a pipe that nobody serves; `program` is started to serve it.
  void UseClientProgram(const std::wstring& program);
  /// Opens the assembly of two bolts and a nut and selects its component `name`.
  void OpenAssembly(const std::wstring& selected = L"bolt-1");
  /// Opens a part with three properties.
  void OpenPart();
  void Answer(const std::string& command, const std::string& text);

  // What the person or the host does. @return the HRESULT; the code of an exception.

  HRESULT Connect();
  HRESULT Disconnect();
  HRESULT Pick(const std::wstring& callback);
  /// Calls the command by name even if its item is greyed out.
  HRESULT Call(const std::wstring& command);
  HRESULT AskWhatIsEnabled();
  /// The add-in's object; null if it is not connected.
  IDispatchPtr Object() const { return m_addIn ? m_addIn->callbacks : IDispatchPtr(); }

  // What came of it.

  /// Forgets what happened so far.
  void ForgetEffects();
  /// Forgets requests that the PLM client read from a connection that a run before has given up.
  void ForgetLateRequests();
  /// What the run changed and what the person and the PLM client saw of it, one text each.
  Texts Effects() const;
  /// The lines of the log, and those that went to the debugger instead.
  Texts LogLines() const;
  /// Those of them that are errors, from their level on.
  Texts ErrorLines() const;
  const Texts& Boxes() const { return m_boxes; }
  /// The model files that have vanished: their content is nowhere.
  Texts LostFiles() const;
  /// The host's objects that the add-in holds, with their counts.
  Texts HeldReferences() const;
  /// The files in the folder for temporary files.
  Texts TemporaryFiles() const { return m_folder.List(L"tmp"); }

  /// `name` below the folder of the model files.
  std::wstring ModelPath(const std::wstring& name) const { return m_folder.Path(L"models\\" + name); }

 private:
  static int WINAPI AnswerBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style);
  static void WINAPI NoteDebugText(const wchar_t* text);

  void MakeModel(const std::wstring& name, cad_host::ModelFile model);
  void MakeModels();
  void Load();
  void Configure(const std::wstring& pipe, const std::wstring& program);
  void StartClient();
  void StartHost();
  bool IsLoggedIn() const;
  /// The PLM client ends the connection a moment after it has answered a log-out.
  void AwaitEndOfConnection() const;
  std::string LogFile() const;
  std::map<std::wstring, std::string> ModelFiles() const;
  void AddDocumentEffects(Texts& effects) const;
  void AddInterfaceEffects(Texts& effects) const;

  static constexpr const wchar_t* kTitle = L"TAVO SolidWorks Integration";
  static constexpr const wchar_t* kLog = L"log\\SolidWorks.log";

  static inline Stage* current = nullptr;

  // Lives longer than the other hosts and keeps the type library registered, which costs handles each time.
  cad_host::Host m_background;
  TempFolder m_folder;
  ScopedEnvironment m_home;
  ScopedEnvironment m_tmp;
  ScopedEnvironment m_temp;
  std::unique_ptr<AddInDll> m_dll;
  std::unique_ptr<ImportGate> m_imports;
  std::unique_ptr<BlockLedger> m_blocks;
  std::map<std::wstring, std::string> m_models;
  plm_client::Script m_script;
  mutable std::mutex m_requestsMutex;
  std::vector<std::pair<int, std::string>> m_requests;  // with the numbers of the connections
  std::unique_ptr<plm_client::Client> m_client;
  std::unique_ptr<cad_host::Host> m_host;
  cad_host::AddIn* m_addIn = nullptr;
  Texts m_boxes;
  Texts m_debugTexts;
  std::size_t m_seenLog = 0;
};

/// An answer of the PLM client whose member `member` names one file.
std::string AnswerNaming(const std::string& member, const std::wstring& path);
