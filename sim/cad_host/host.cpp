#include "cad_host/host.h"

#include <algorithm>
#include <utility>

#include "base/system_path.h"
#include "com/application_object.h"
#include "com/document_object.h"
#include "com/host_state.h"
#include "documents/assembly.h"
#include "files/paths.h"

namespace cad_host {
namespace {

AddInEntry FindRegistered(const std::wstring& title_or_clsid) {
  for (AddInEntry& entry : AddIns::Registered()) {
    if (SameName(entry.title, title_or_clsid) || SameName(entry.clsid, title_or_clsid)) return entry;
  }
  throw HostError(L"no add-in is registered as \"" + title_or_clsid +
                  L"\" under HKLM\\SOFTWARE\\SolidWorks\\AddIns");
}

IDispatchPtr Serve(const std::shared_ptr<Services>& services, const std::shared_ptr<Document>& document) {
  return {static_cast<IDispatch*>(ServeDocument(services, document)), false};
}

}  // namespace

Host::Host(HostOptions options)
    : m_state(std::make_shared<HostState>(options.state_folder, std::move(options.revision), Serve)) {
  m_state->services->host = m_state;
  m_state->services->quirks = std::move(options.quirks);
}

Host::~Host() {
  while (!ConnectedAddIns().empty()) {
    try {
      Disconnect(*ConnectedAddIns().back());
    } catch (...) {
      // The add-in has been removed already; a destructor cannot report the exception.
    }
  }
}

const std::wstring& Host::Revision() const { return m_state->revision; }

Journal& Host::GetJournal() { return m_state->services->journal; }

Faults& Host::GetFaults() { return m_state->services->faults; }

Quirks& Host::GetQuirks() { return m_state->services->quirks; }

ISldWorksPtr Host::Application() {
  return {static_cast<ISldWorks*>(ObjectFor<ApplicationObject>(m_state->services, m_state)), false};
}

std::vector<HeldReference> Host::HeldReferences() const {
  std::vector<HeldReference> held;
  for (const HostObject* const object : m_state->services->objects) {
    held.push_back({object->Describe(), object->References()});
  }
  return held;
}

void Host::OnLastRelease(std::function<void(const std::wstring& object)> action) {
  m_state->services->on_last_release = std::move(action);
}

std::size_t Host::AdvisedSinks() const { return m_state->events.Sinks().size(); }

std::vector<IDispatchPtr> Host::EventSinks() const {
  std::vector<IDispatchPtr> sinks;
  for (const auto& [cookie, sink] : m_state->events.Sinks()) sinks.push_back(sink);
  return sinks;
}

std::shared_ptr<Document> Host::Open(const std::wstring& path) {
  const OpenResult opened = m_state->documents.Open({path, DocumentTypeOfName(path), 0, {}});
  if (!opened.document) throw HostError(opened.reason);
  m_state->documents.Activate(opened.document);
  return opened.document;
}

std::shared_ptr<Document> Host::New(swDocumentTypes_e type) { return m_state->documents.New(type); }

void Host::Save(Document& document, const std::wstring& path) { m_state->documents.Save(document, path); }

std::shared_ptr<Document> Host::FindDocument(const std::wstring& name) const {
  auto document = m_state->documents.Find(name);
  return document ? document : m_state->documents.Find(FullPath(name));
}

std::shared_ptr<Document> Host::ActiveDocument() const { return m_state->documents.Active(); }

const std::vector<std::shared_ptr<Document>>& Host::OpenDocuments() const { return m_state->documents.All(); }

void Host::Activate(const std::shared_ptr<Document>& document) { m_state->documents.Activate(document); }

void Host::Close(const std::shared_ptr<Document>& document) { m_state->documents.Close(document); }

std::shared_ptr<Component> Host::AddComponent(Document& assembly, const std::wstring& path,
                                              const Point& position) {
  return cad_host::AddComponent(m_state->documents, assembly, path, position);
}

void Host::Resolve(Document& assembly, Component& component) {
  assembly.changed = true;
  m_state->documents.Resolve(component);
}

void Host::Suppress(Document& assembly, Component& component) {
  assembly.changed = true;
  Documents::Suppress(component);
}

std::vector<AddInEntry> Host::RegisteredAddIns() { return AddIns::Registered(); }

AddIn& Host::Connect(const std::wstring& title_or_clsid) {
  const AddInEntry entry = FindRegistered(title_or_clsid);
  const ISldWorksPtr application = Application();
  return m_state->add_ins.Connect(AddIns::Load(entry), entry, application);
}

AddIn& Host::Connect(ISwAddin* object, const std::wstring& title) {
  const ISldWorksPtr application = Application();
  return m_state->add_ins.Connect(object, {.clsid = {}, .title = title, .description = {}}, application);
}

bool Host::Disconnect(AddIn& add_in) { return m_state->add_ins.Disconnect(add_in); }

const std::vector<std::unique_ptr<AddIn>>& Host::ConnectedAddIns() const { return m_state->add_ins.All(); }

const std::vector<std::shared_ptr<CommandGroup>>& Host::Groups() const { return m_state->commands.Groups(); }

const std::vector<std::shared_ptr<CommandTab>>& Host::Tabs() const { return m_state->commands.Tabs(); }

const SavedGroup* Host::FindSavedGroup(const AddIn& add_in, long user_id) const {
  return m_state->commands.FindSaved(add_in.Key(), user_id);
}

const CommandItem& Host::FindItem(const AddIn& add_in, const std::wstring& name) const {
  for (const auto& group : Groups()) {
    if (group->add_in != add_in.Key()) continue;
    for (const CommandItem& item : group->items) {
      if (item.name == name || item.callback == name) return item;
    }
  }
  throw HostError(add_in.entry.title + L" has no item \"" + name + L"\"");
}

ItemState Host::StateOf(AddIn& add_in, const std::wstring& item) {
  return m_state->add_ins.StateOf(add_in, FindItem(add_in, item).enable_method);
}

PickResult Host::Pick(AddIn& add_in, const std::wstring& item) {
  const std::wstring callback = FindItem(add_in, item).callback;
  if (!IsEnabled(add_in, item)) return {};
  return m_state->add_ins.Call(add_in, callback);
}

}  // namespace cad_host
