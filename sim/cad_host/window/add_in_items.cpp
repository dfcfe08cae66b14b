#include "add_in_items.h"

#include <algorithm>
#include <utility>

namespace cad_host {
namespace {

bool SameItem(const AddInItem& a, const AddInItem& b) {
  return a.group == b.group && a.item.name == b.item.name && a.item.command_id == b.item.command_id &&
         a.group->small_icons.path == b.group->small_icons.path;
}

}  // namespace

bool AddInItems::Update() {
  std::vector<AddInItem> items;
  for (const auto& group : m_host.Groups()) {
    if (!group->active) continue;
    for (const CommandItem& item : group->items) {
      const int id = kFirstId + static_cast<int>(items.size());
      items.push_back({.id = id, .add_in = group->add_in, .group = group, .item = item, .state = {}});
    }
  }
  if (std::ranges::equal(items, m_items, SameItem)) return false;
  m_items = std::move(items);
  return true;
}

bool AddInItems::UpdateStates() {
  bool different = false;
  for (AddInItem& item : m_items) {
    AddIn* const add_in = Connected(item.add_in);
    const ItemState state = add_in ? m_host.StateOf(*add_in, item.item.name) : ItemState{.enabled = false};
    different |= item.state != state;
    item.state = state;
  }
  return different;
}

const AddInItem* AddInItems::Find(int id) const {
  const auto place = static_cast<std::size_t>(id - kFirstId);
  return id >= kFirstId && place < m_items.size() ? &m_items[place] : nullptr;
}

const AddInItem* AddInItems::FindCommand(long command_id) const {
  const auto found = std::ranges::find_if(
      m_items, [&](const AddInItem& item) { return item.item.command_id == command_id; });
  return found == m_items.end() ? nullptr : &*found;
}

std::vector<std::wstring> AddInItems::PickWords(const AddInItem& item) const {
  std::vector<std::wstring> words{L"pick", item.item.name};
  if (m_host.ConnectedAddIns().size() > 1) {
    const AddIn* const add_in = Connected(item.add_in);
    words.insert(words.end(), {L"of", add_in ? add_in->entry.title : item.add_in});
  }
  return words;
}

AddIn* AddInItems::Connected(const std::wstring& key) const {
  const auto& connected = m_host.ConnectedAddIns();
  const auto found =
      std::ranges::find_if(connected, [&](const auto& add_in) { return add_in->Key() == key; });
  return found == connected.end() ? nullptr : found->get();
}

}  // namespace cad_host
