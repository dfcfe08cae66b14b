#include "assembly.h"

#include <algorithm>
#include <vector>

#include "base/system_path.h"
#include "cad_host/host_error.h"
#include "files/paths.h"

namespace cad_host {
namespace {

using Components = std::vector<std::shared_ptr<Component>>;

/// A name such as "bolt-3" with the first number that no instance has.
std::wstring InstanceName(const Document& assembly, const std::wstring& path) {
  for (int number = 1;; ++number) {
    std::wstring name = BaseNameOf(path) + L"-" + std::to_wstring(number);
    if (!assembly.FindComponent(name)) return name;
  }
}

bool IsSelected(const Document& assembly, const Component& component, bool any_instance) {
  return std::any_of(assembly.selection.begin(), assembly.selection.end(), [&](const Selection& selection) {
    if (!selection.component) return false;
    return selection.component.get() == &component ||
           (any_instance && SameName(selection.component->record.path, component.record.path));
  });
}

Components SelectedComponents(const Document& assembly, bool all_instances) {
  Components selected;
  for (const auto& component : assembly.components) {
    if (IsSelected(assembly, *component, all_instances)) selected.push_back(component);
  }
  return selected;
}

/// Whether the file `path` has the file name of one of the components.
bool HasFileNameOf(const Components& components, const std::wstring& path) {
  return std::any_of(components.begin(), components.end(), [&](const auto& component) {
    return SameName(FileNameOf(component->record.path), FileNameOf(path));
  });
}

void MoveMates(Document& assembly, const std::wstring& from, const std::wstring& to, bool reattach) {
  auto& mates = assembly.model.mates;
  if (!reattach) {
    std::erase_if(mates, [&](const MateRecord& mate) { return mate.first == from || mate.second == from; });
  }
  for (MateRecord& mate : mates) {
    if (mate.first == from) mate.first = to;
    if (mate.second == from) mate.second = to;
  }
}

void Replace(Documents& documents, Document& assembly, Component& component, const Replacement& replacement) {
  const std::wstring old_name = component.record.name;
  const bool suppressed = component.IsSuppressed();
  Documents::Suppress(component);
  component.record.name = InstanceName(assembly, replacement.path);
  component.record.path = replacement.path;
  if (!suppressed) documents.Resolve(component);
  MoveMates(assembly, old_name, component.record.name, replacement.reattach_mates);
}

}  // namespace

std::shared_ptr<Component> AddComponent(Documents& documents, Document& assembly, const std::wstring& path,
                                        const Point& position) {
  auto component = std::make_shared<Component>();
  component->record.path = FullPath(path);
  component->record.position = position;
  component->record.name = InstanceName(assembly, component->record.path);
  documents.Resolve(*component);
  assembly.components.push_back(component);
  assembly.changed = true;
  return component;
}

std::wstring ReplaceSelected(Documents& documents, Document& assembly, const Replacement& replacement) {
  Replacement full = replacement;
  full.path = FullPath(replacement.path);
  const Components selected = SelectedComponents(assembly, full.all_instances);
  if (selected.empty()) return L"no component is selected";
  if (full.refuses_same_name && HasFileNameOf(selected, full.path)) {
    return L"the replacement has the file name of the component: " + full.path;
  }
  try {
    if (ReadModelFile(full.path).type == swDocDRAWING) {
      return L"a drawing cannot be a component: " + full.path;
    }
  } catch (const HostError& error) {
    return error.Message();
  }
  for (const auto& component : selected) Replace(documents, assembly, *component, full);
  assembly.changed = true;
  return {};
}

}  // namespace cad_host
