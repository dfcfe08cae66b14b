#include "documents.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "CStringHelper.h"
#include "base/file_attributes.h"
#include "base/system_path.h"
#include "cad_host/host_error.h"
#include "files/paths.h"
#include "host_values.h"

namespace cad_host {
namespace {

/// The title of a document that was never saved: "Part1", "Assem2", "Draw3".
std::wstring NewTitle(swDocumentTypes_e type, int number) {
  const wchar_t* const stem = type == swDocASSEMBLY ? L"Assem" : type == swDocDRAWING ? L"Draw" : L"Part";
  return stem + std::to_wstring(number);
}

bool IsReadOnlyFile(const std::wstring& path) {
  const DWORD attributes = FileAttributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

OpenResult Refused(long errors, const std::wstring& path, const wchar_t* reason) {
  return {.document = nullptr, .errors = errors, .reason = path + L": " + reason};
}

}  // namespace

OpenResult Documents::Open(const OpenRequest& request) {
  const std::wstring path = FullPath(request.path);
  if (const auto open = Find(path)) return {.document = open, .errors = 0, .reason = {}};
  if (!IsFile(path)) return Refused(swFileNotFoundError, path, L"no such file");
  const swDocumentTypes_e type = DocumentTypeOfName(path);
  if (type == swDocNONE) return Refused(swInvalidFileTypeError, path, L"not the name of a document");
  if (type != request.type) return Refused(swInvalidFileTypeError, path, L"asked for as another type");

  m_observer.OnFileOpenPre(path);
  OpenRequest full = request;
  full.path = path;
  OpenResult result = Load(full);
  if (!result.document) return result;
  m_observer.OnDocumentLoad(*result.document);
  m_open.push_back(result.document);
  m_observer.OnActiveDocumentChange();
  m_observer.OnFileOpenPost(path);
  return result;
}

OpenResult Documents::Load(const OpenRequest& request) {
  try {
    auto document = std::make_shared<Document>();
    document->hold = Hold(request.path);
    document->model = ReadModelFile(request.path);
    if (document->model.type != request.type) {
      return Refused(swInvalidFileTypeError, request.path, L"its content is of another type than its name");
    }
    document->path = request.path;
    document->title = FileNameOf(request.path);
    document->view_only = request.options & swOpenDocOptions_ViewOnly;
    document->read_only = (request.options & swOpenDocOptions_ReadOnly) || IsReadOnlyFile(request.path);
    if (document->model.configurations.contains(request.configuration)) {
      document->configuration = request.configuration;
    }
    LoadComponents(*document);
    return {.document = document, .errors = 0, .reason = {}};
  } catch (const HostError& error) {
    return {.document = nullptr, .errors = swGenericError, .reason = error.Message()};
  }
}

void Documents::LoadComponents(Document& document) {
  Revisions known;  // many components may share a file
  for (ComponentRecord& record : std::exchange(document.model.components, {})) {
    auto component = std::make_shared<Component>();
    component->record = std::move(record);
    document.components.push_back(component);
    if (component->IsSuppressed()) continue;
    try {
      Resolve(*component, known);
    } catch (const HostError& error) {
      m_journal.Note(component->record.name + L" comes up suppressed: " + error.Message());
    }
  }
}

std::shared_ptr<FileHold> Documents::Hold(const std::wstring& path) {
  return m_quirks.IsOn(Quirk::kHeldFiles) ? m_holds.Hold(path) : nullptr;
}

void Documents::Resolve(Component& component) {
  Revisions known;
  Resolve(component, known);
}

void Documents::Resolve(Component& component, Revisions& known) {
  Suppress(component);
  component.hold = Hold(component.record.path);
  try {
    const std::wstring key = CStringHelper::ToLower(component.record.path);
    auto revision = known.find(key);
    if (revision == known.end()) {
      revision = known.emplace(key, ReadModelFile(component.record.path).revision).first;
    }
    component.loaded_revision = revision->second;
  } catch (...) {
    component.hold = nullptr;
    throw;
  }
  component.record.suppression = swComponentResolved;
}

void Documents::Suppress(Component& component) {
  component.hold = nullptr;
  component.record.suppression = swComponentSuppressed;
}

std::shared_ptr<Document> Documents::New(swDocumentTypes_e type) {
  auto document = std::make_shared<Document>();
  document->model.type = type;
  document->title = NewTitle(type, ++m_created);
  document->changed = true;
  m_open.push_back(document);
  m_observer.OnFileNew(document);
  m_observer.OnActiveDocumentChange();
  return document;
}

void Documents::Save(Document& document, const std::wstring& path) {
  const std::wstring target = path.empty() ? document.path : FullPath(path);
  if (target.empty()) throw HostError(document.title + L": was never saved, so a path is needed");
  if (DocumentTypeOfName(target) != document.Type()) {
    throw HostError(target + L": not the name of a " + DocumentTypeName(document.Type()));
  }
  ModelFile model = document.model;
  for (const auto& component : document.components) model.components.push_back(component->record);
  {
    const auto hold = m_holds.Find(target);
    const FileHold::Pause writing(hold.get());
    if (document.path.empty()) {
      ++model.revision;
      WriteModelFile(target, model);
    } else {
      SaveModelFile(target, document.path, model);
    }
  }
  document.model.kind = model.kind;
  document.model.revision = model.revision;
  document.path = target;
  document.title = FileNameOf(target);
  document.hold = Hold(target);
  document.changed = false;
}

std::shared_ptr<Document> Documents::Find(const std::wstring& name) const {
  const auto found = std::find_if(m_open.begin(), m_open.end(), [&](const auto& document) {
    return SameName(document->title, name) || (!document->path.empty() && SameName(document->path, name));
  });
  return found == m_open.end() ? nullptr : *found;
}

void Documents::Activate(const std::shared_ptr<Document>& document) {
  if (document == Active()) return;
  std::erase(m_open, document);
  m_open.push_back(document);
  m_observer.OnActiveDocumentChange();
}

void Documents::Close(const std::shared_ptr<Document>& document) {
  const bool was_active = document == Active();
  m_observer.OnFileClose(*document);
  std::erase(m_open, document);
  document->hold = nullptr;
  for (const auto& component : document->components) component->hold = nullptr;
  if (was_active && !m_open.empty()) m_observer.OnActiveDocumentChange();
}

}  // namespace cad_host
