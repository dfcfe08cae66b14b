#include "cad_host/document.h"

#include <algorithm>

#include "files/paths.h"

namespace cad_host {

std::wstring Document::Describe() const { return DocumentTypeName(Type()) + L" \"" + title + L"\""; }

std::shared_ptr<Component> Document::FindComponent(const std::wstring& name) const {
  const auto found = std::find_if(components.begin(), components.end(), [&](const auto& component) {
    return SameName(component->record.name, name);
  });
  return found == components.end() ? nullptr : *found;
}

}  // namespace cad_host
