#include "tree_rows.h"

#include <utility>

#include "icons.h"
#include "resource_ids.h"

namespace cad_host {
namespace {

using Kind = TreeRow::Kind;

int IconOfType(long type) {
  return type == swDocASSEMBLY ? kAssemblyIcon : type == swDocDRAWING ? kDrawingIcon : kPartIcon;
}

}  // namespace

void TreeRows::Show(std::shared_ptr<const Document> document) {
  m_document = std::move(document);
  m_rows.clear();
  if (!m_document) return;
  m_rows.push_back({});
  if (m_document->Type() == swDocASSEMBLY) {
    AddFolder(Kind::kComponents, Kind::kComponent, m_document->components.size());
    AddFolder(Kind::kMates, Kind::kMate, m_document->model.mates.size());
  } else if (m_document->Type() == swDocDRAWING) {
    AddFolder(Kind::kViews, Kind::kView, m_document->model.views.size());
  }
}

void TreeRows::AddFolder(Kind folder, Kind content, std::size_t count) {
  m_rows.push_back({folder, 1, 0});
  if (m_closed.contains(folder)) return;
  for (std::size_t index = 0; index < count; ++index) m_rows.push_back({content, 2, index});
}

std::wstring TreeRows::Name(std::size_t row) const {
  const TreeRow& shown = m_rows[row];
  const ModelFile& model = m_document->model;
  switch (shown.kind) {
    case Kind::kDocument:
      return m_document->title;
    case Kind::kComponents:
      return m_texts(IDS_COMPONENTS, std::to_wstring(m_document->components.size()));
    case Kind::kMates:
      return m_texts(IDS_MATES, std::to_wstring(model.mates.size()));
    case Kind::kViews:
      return m_texts(IDS_VIEWS, std::to_wstring(model.views.size()));
    case Kind::kComponent: {
      const Component* const component = ComponentOf(shown);
      return component ? component->record.name : L"";
    }
    case Kind::kMate:
      return shown.index < model.mates.size() ? model.mates[shown.index].name : L"";
    case Kind::kView:
      return shown.index < model.views.size() ? model.views[shown.index].name : L"";
  }
  return {};
}

std::wstring TreeRows::State(std::size_t row) const {
  const TreeRow& shown = m_rows[row];
  const ModelFile& model = m_document->model;
  if (shown.kind == Kind::kDocument) return m_texts(IDS_REVISION, std::to_wstring(model.revision));
  if (const Component* const component = ComponentOf(shown)) {
    if (component->IsSuppressed()) return m_texts(IDS_SUPPRESSED);
    return m_texts(IDS_REVISION, std::to_wstring(component->loaded_revision));
  }
  if (shown.kind == Kind::kMate && shown.index < model.mates.size()) {
    return model.mates[shown.index].first + L", " + model.mates[shown.index].second;
  }
  if (shown.kind == Kind::kView && shown.index < model.views.size()) return model.views[shown.index].model;
  return {};
}

int TreeRows::Icon(std::size_t row) const {
  const TreeRow& shown = m_rows[row];
  if (IsFolder(row)) return IsOpen(row) ? kOpenFolderIcon : kClosedFolderIcon;
  if (shown.kind == Kind::kDocument) return IconOfType(m_document->Type());
  if (const Component* const component = ComponentOf(shown)) {
    return component->IsSuppressed() ? kSuppressedIcon
                                     : IconOfType(DocumentTypeOfName(component->record.path));
  }
  return shown.kind == Kind::kView ? kViewIcon : kFaceIcon;
}

std::shared_ptr<Component> TreeRows::ComponentAt(std::size_t row) const {
  if (row >= m_rows.size() || !ComponentOf(m_rows[row])) return nullptr;
  return m_document->components[m_rows[row].index];
}

int TreeRows::RowOf(const Component* component) const {
  for (std::size_t row = 0; row < m_rows.size(); ++row) {
    if (component && ComponentOf(m_rows[row]) == component) return static_cast<int>(row);
  }
  return -1;
}

bool TreeRows::IsFolder(std::size_t row) const {
  const Kind kind = m_rows[row].kind;
  return kind == Kind::kComponents || kind == Kind::kMates || kind == Kind::kViews;
}

bool TreeRows::IsOpen(std::size_t row) const { return !m_closed.contains(m_rows[row].kind); }

void TreeRows::SetOpen(std::size_t row, bool open) {
  if (open) {
    m_closed.erase(m_rows[row].kind);
  } else {
    m_closed.insert(m_rows[row].kind);
  }
  Show(m_document);
}

// An action that runs may have removed components that still have rows.
const Component* TreeRows::ComponentOf(const TreeRow& row) const {
  const bool is_there = row.kind == Kind::kComponent && row.index < m_document->components.size();
  return is_there ? m_document->components[row.index].get() : nullptr;
}

}  // namespace cad_host
