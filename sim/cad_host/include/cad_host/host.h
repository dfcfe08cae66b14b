/// @file The simulated CAD host: a session of the application with documents, add-ins and a command
/// interface that keep their state.
///
/// Add-ins get real COM objects with the host's own interface ids and vtable slots. The program that drives
/// the host acts as the person at it:
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
/// Everything happens on the thread that created the host, which becomes a single-threaded apartment.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "cad_host/add_in.h"
#include "cad_host/commands.h"
#include "cad_host/document.h"
#include "cad_host/faults.h"
#include "cad_host/host_error.h"
#include "cad_host/journal.h"
#include "cad_host/quirks.h"
#include "host/application.h"

namespace cad_host {

struct HostState;

struct HostOptions {
  std::wstring state_folder = {};  ///< for tabs and command ids; created if missing; empty: not stored
  std::wstring revision = L"31.0.0";
  Quirks quirks = {};
};

/// An object of the host that is still held from outside.
struct HeldReference {
  std::wstring object;  ///< such as `part "bolt.sldprt"`
  unsigned long count = 0;
};

class Host {
 public:
  /// Starts a session and registers the host's type library if it is not registered yet.
  /// @throws HostError if the state folder cannot be created or its file cannot be read.
  explicit Host(HostOptions options = {});
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// Disconnects the add-ins that are still connected. Objects that are still held return RPC_E_DISCONNECTED
  /// from every call.
  ~Host();

  /// The host's revision number, as in HostOptions.
  const std::wstring& Revision() const;

  Journal& GetJournal();
  Faults& GetFaults();
  Quirks& GetQuirks();

  /// The application object, with a reference that counts as held from outside.
  ISldWorksPtr Application();

  /// The objects that are held from outside. Empty if all references were released.
  std::vector<HeldReference> HeldReferences() const;

  /// From now on, calls `action` whenever the last reference to an object is released, with what
  /// HeldReferences calls the object.
  void OnLastRelease(std::function<void(const std::wstring& object)> action);

  /// How many event sinks are advised.
  std::size_t AdvisedSinks() const;

  /// The event sinks in the order in which they were advised.
  std::vector<IDispatchPtr> EventSinks() const;

  // Documents, as the person opens, creates, saves and closes them. Names are titles or paths, without
  // regard to case.

  /// Opens the file, or activates its document if it is open already.
  /// @throws HostError with the file and the reason if it cannot be opened.
  std::shared_ptr<Document> Open(const std::wstring& path);

  /// Creates a document without a file and makes it the active one.
  std::shared_ptr<Document> New(swDocumentTypes_e type);

  /// Writes the document to its file, or to `path`, which becomes its file.
  /// @throws HostError naming the file or document if it cannot be written or the document has no file.
  void Save(Document& document, const std::wstring& path = {});

  /// The open document `name`; null if there is none.
  std::shared_ptr<Document> FindDocument(const std::wstring& name) const;

  /// The active document; null if none is open.
  std::shared_ptr<Document> ActiveDocument() const;

  const std::vector<std::shared_ptr<Document>>& OpenDocuments() const;

  void Activate(const std::shared_ptr<Document>& document);

  /// Closes without saving.
  void Close(const std::shared_ptr<Document>& document);

  /// Adds an instance of the model file `path` to the open assembly.
  /// @throws HostError naming the file if it cannot be loaded.
  std::shared_ptr<Component> AddComponent(Document& assembly, const std::wstring& path,
                                          const Point& position = {});

  /// Loads the file of the component, as it is now, and shows it.
  /// @throws HostError naming the file if it cannot be loaded; then the component is suppressed.
  void Resolve(Document& assembly, Component& component);

  /// Hides the component and closes its file.
  void Suppress(Document& assembly, Component& component);

  // Add-ins.

  /// The add-ins in the registry.
  static std::vector<AddInEntry> RegisteredAddIns();

  /// Loads and connects the registered add-in with this title or class id.
  /// @throws HostError naming the step that failed and its code. An exception of the add-in's ConnectToSW is
  ///         passed on after the add-in has been released.
  AddIn& Connect(const std::wstring& title_or_clsid);

  /// Connects an add-in object of the caller under the title `title`.
  AddIn& Connect(ISwAddin* object, const std::wstring& title);

  /// Disconnects and releases the add-in, and unloads COM libraries that are no longer used.
  /// @return whether the add-in reported that it has disconnected.
  bool Disconnect(AddIn& add_in);

  const std::vector<std::unique_ptr<AddIn>>& ConnectedAddIns() const;

  // The command interface.

  /// All groups that were not removed.
  const std::vector<std::shared_ptr<CommandGroup>>& Groups() const;

  /// All tabs, in the order in which they were created.
  const std::vector<std::shared_ptr<CommandTab>>& Tabs() const;

  /// What was stored when the group was activated; null if nothing was stored.
  const SavedGroup* FindSavedGroup(const AddIn& add_in, long user_id) const;

  /// The add-in's item with this menu text or callback name.
  /// @throws HostError naming the item if there is no such item.
  const CommandItem& FindItem(const AddIn& add_in, const std::wstring& name) const;

  /// Calls the item's enable method. An item without an enable method is enabled.
  ItemState StateOf(AddIn& add_in, const std::wstring& item);
  bool IsEnabled(AddIn& add_in, const std::wstring& item) { return StateOf(add_in, item).enabled; }

  /// Does what the person's click does: calls the enable method and, if the item is enabled, the callback.
  PickResult Pick(AddIn& add_in, const std::wstring& item);

 private:
  std::shared_ptr<HostState> m_state;
};

}  // namespace cad_host
