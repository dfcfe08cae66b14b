/// @file The add-in with everything around it: the real DLL in the simulated host, and the PLM client.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "cad_host/host.h"
#include "client_process.h"
#include "environment.h"
#include "failing_calls/block_ledger.h"
#include "failing_calls/import_gate.h"
#include "module/add_in_dll.h"
#include "temp_folder.h"

using Texts = std::vector<std::wstring>;

/// One host process with its files. Message boxes are answered with OK at once, without windows. At most one
/// object.
class Scene {
 public:
  Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;
  ~Scene();

  cad_host::Host& GetHost() { return *m_host; }
  ClientProcess& Client() { return *m_client; }
  /// What the DLL holds of the C runtime's heap.
  const BlockLedger& Blocks() const { return *m_blocks; }

  // What the person and the host do.

  void Connect();
  /// @return whether the add-in reported that it is disconnected.
  bool Disconnect();
  /// Picks the item with this callback. @return the command's HRESULT; OLE_E_NOTRUNNING if it is greyed out.
  HRESULT Pick(const std::wstring& callback);
  bool IsEnabled(const std::wstring& callback) { return m_host->IsEnabled(*m_addIn, callback); }
  bool IsLoggedIn() { return !IsEnabled(L"PlmLogin"); }
  /// Logs in, or out, unless that is so already. @throws std::runtime_error if the command fails.
  void LogIn();
  void LogOut();
  /// Closes all documents without saving them.
  void CloseDocuments();
  /// Opens the assembly of a bolt and a nut anew and selects its component `selected`.
  std::shared_ptr<cad_host::Document> OpenAssembly(const std::wstring& selected = L"bolt-1");

  // Files, with their names below the folder of the models.

  /// Writes a part with this revision; no other file may have its content.
  void WritePart(const std::wstring& name, long revision);
  void RemoveFile(const std::wstring& name);
  /// The revision of the part; 0 if there is no such file.
  long RevisionOf(const std::wstring& name) const;
  std::wstring ModelPath(const std::wstring& name) const { return m_folder.Path(L"models\\" + name); }
  Texts TemporaryFiles() const { return m_folder.List(L"tmp"); }

  // The PLM client.

  /// The client answers `command` with `text` from now on.
  void Answer(const std::string& command, const std::string& text);
  /// The client's next choices of files are answered with a member `member` that names this file.
  void AnswerWithFile(const std::string& member, const std::wstring& name);

  // What came of it.

  /// Forgets message boxes and the host's journal.
  void Forget();
  const Texts& Boxes() const { return m_boxes; }
  /// Grows with each line of the log.
  long long LogSize() const;
  /// The end of the log, from `size` on.
  std::string LogFrom(long long size) const;

 private:
  static int WINAPI AnswerBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style);

  static inline Scene* current = nullptr;

  TempFolder m_folder;
  ScopedEnvironment m_home;
  ScopedEnvironment m_tmp;
  ScopedEnvironment m_temp;
  AddInDll m_dll;
  std::unique_ptr<ImportGate> m_imports;
  std::unique_ptr<BlockLedger> m_blocks;
  std::unique_ptr<ClientProcess> m_client;
  std::unique_ptr<cad_host::Host> m_host;
  cad_host::AddIn* m_addIn = nullptr;
  std::map<std::string, std::string> m_answers;
  Texts m_boxes;
};
