/// @file The simulated CAD host: a session of the application with documents, add-ins and a command
/// interface that keep their state.
///
/// An add-in meets real COM objects under the host's own interface ids and slots; the program that drives
/// the host plays the person at it:
///
///     cad_host::Host host({.state_folder = folder.Path()});
///     cad_host::AddIn& add_in = host.Connect(L"TAVO SolidWorks Integration");
///     host.Open(folder.Path(L"bolt.sldprt"));
///     host.GetFaults().Fail(L"ISldWorks::OpenDoc6", 1, E_FAIL);
///     host.Pick(add_in, L"OpenDataSelector");
///     host.GetJournal().Contains(L"ISldWorks::OpenDoc6(");
///     host.Disconnect(add_in);
///     host.HeldReferences();  // what the add-in forgot to release
///
/// Everything happens on the thread that made the host, which becomes a single-threaded apartment.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cad_host/add_in.h"
#include "cad_host/commands.h"
#include "cad_host/document.h"
#include "cad_host/faults.h"
#include "cad_host/host_error.h"
#include "cad_host/journal.h"
#include "host/application.h"

namespace cad_host {

struct HostState;

struct HostOptions {
  std::wstring state_folder = {};  ///< for tabs and saved command ids; made if missing; empty: none
  std::wstring revision = L"31.0.0";
};

/// An object of the host that somebody outside still holds.
struct HeldReference {
  std::wstring object;  ///< such as `IModelDoc2 of part "bolt.sldprt"`
  unsigned long count = 0;
};

class Host {
 public:
  /// Starts a session and registers the host's type library where it is not.
  /// @throws HostError where the state folder cannot be made or its file cannot be read.
  explicit Host(HostOptions options = {});
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// Disconnects what is still connected. Objects that are held beyond this answer every call with
  /// RPC_E_DISCONNECTED.
  ~Host();

  Journal& GetJournal();
  Faults& GetFaults();

  /// The application object, with a reference that counts as held from outside.
  ISldWorksPtr Application();

  /// What is held from outside, by object. Empty when everybody has released what they got.
  std::vector<HeldReference> HeldReferences() const;

  /// How many event sinks are advised.
  std::size_t AdvisedSinks() const;

  /// The event sinks, as they were advised.
  std::vector<IDispatchPtr> EventSinks() const;

  // Documents, as the person opens, makes, saves and closes them. Names are titles or paths, without
  // regard to case.

  /// Opens the file, or activates the document that has it open already.
  /// @throws HostError naming the file and what is wrong with it.
  std::shared_ptr<Document> Open(const std::wstring& path);

  /// A new document, never saved, that becomes the active one.
  std::shared_ptr<Document> New(swDocumentTypes_e type);

  /// Writes the document to its file, or to `path`, which becomes its file.
  /// @throws HostError naming the file where it cannot be written or the document has none.
  void Save(Document& document, const std::wstring& path = {});

  /// The open document `name`; null if there is none.
  std::shared_ptr<Document> FindDocument(const std::wstring& name) const;

  /// The active document; null if none is open.
  std::shared_ptr<Document> ActiveDocument() const;

  const std::vector<std::shared_ptr<Document>>& OpenDocuments() const;

  void Activate(const std::shared_ptr<Document>& document);

  /// Closes without saving.
  void Close(const std::shared_ptr<Document>& document);

  /// Puts an instance of the model file `path` into the open assembly.
  /// @throws HostError naming the file where it cannot be loaded.
  std::shared_ptr<Component> AddComponent(Document& assembly, const std::wstring& path,
                                          const Point& position = {});

  // Add-ins.

  /// The add-ins of the registry.
  static std::vector<AddInEntry> RegisteredAddIns();

  /// Loads and connects the registered add-in with this title or class id.
  /// @throws HostError naming the step that failed and its code. An exception that leaves the add-in's
  ///         ConnectToSW passes through; the add-in is released then.
  AddIn& Connect(const std::wstring& title_or_clsid);

  /// Connects an add-in object that the caller made, known by `title`.
  AddIn& Connect(ISwAddin* object, const std::wstring& title);

  /// Disconnects and releases the add-in and lets COM unload what is unused.
  /// @return whether the add-in called itself disconnected.
  bool Disconnect(AddIn& add_in);

  const std::vector<std::unique_ptr<AddIn>>& ConnectedAddIns() const;

  // The command interface.

  /// All groups that were not removed.
  const std::vector<std::shared_ptr<CommandGroup>>& Groups() const;

  /// All tabs, first made first.
  const std::vector<std::shared_ptr<CommandTab>>& Tabs() const;

  /// What an earlier activation left of the group; null if nothing.
  const SavedGroup* FindSavedGroup(const AddIn& add_in, long user_id) const;

  /// The add-in's item with this menu text or callback name.
  /// @throws HostError naming an item that is not there.
  const CommandItem& FindItem(const AddIn& add_in, const std::wstring& name) const;

  /// Asks the item's enable method. An item without one is enabled.
  bool IsEnabled(AddIn& add_in, const std::wstring& item);

  /// What the person's click does: asks the enable method and calls the callback.
  PickResult Pick(AddIn& add_in, const std::wstring& item);

 private:
  std::shared_ptr<HostState> m_state;
};

}  // namespace cad_host
