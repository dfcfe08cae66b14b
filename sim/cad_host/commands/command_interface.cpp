#include "command_interface.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <utility>

namespace cad_host {
namespace {

bool IsOf(const auto& group, const std::wstring& add_in, long user_id) {
  return group.add_in == add_in && group.user_id == user_id;
}

std::vector<long> UserIdsOf(const CommandGroup& group) {
  std::vector<long> ids;
  ids.reserve(group.items.size());
  for (const CommandItem& item : group.items) ids.push_back(item.user_id);
  return ids;
}

}  // namespace

CommandInterface::CommandInterface(const std::wstring& state_folder)
    : m_store(state_folder), m_memory(m_store.Read()) {}

std::shared_ptr<CommandGroup> CommandInterface::CreateGroup(CommandGroup group) {
  if (FindGroup(group.add_in, group.user_id)) return nullptr;
  m_groups.push_back(std::make_shared<CommandGroup>(std::move(group)));
  return m_groups.back();
}

std::shared_ptr<CommandGroup> CommandInterface::FindGroup(const std::wstring& add_in, long user_id) const {
  const auto found = std::find_if(m_groups.begin(), m_groups.end(),
                                  [&](const auto& group) { return IsOf(*group, add_in, user_id); });
  return found == m_groups.end() ? nullptr : *found;
}

bool CommandInterface::RemoveGroup(const std::wstring& add_in, long user_id) {
  return std::erase(m_groups, FindGroup(add_in, user_id)) > 0;
}

const SavedGroup* CommandInterface::FindSaved(const std::wstring& add_in, long user_id) const {
  const auto found = std::find_if(m_memory.groups.begin(), m_memory.groups.end(),
                                  [&](const SavedGroup& group) { return IsOf(group, add_in, user_id); });
  return found == m_memory.groups.end() ? nullptr : &*found;
}

SavedGroup& CommandInterface::SavedPlace(const CommandGroup& group) {
  if (const SavedGroup* const saved = FindSaved(group.add_in, group.user_id)) {
    return const_cast<SavedGroup&>(*saved);
  }
  m_memory.groups.push_back({group.add_in, group.user_id, {}, {}});
  return m_memory.groups.back();
}

void CommandInterface::Activate(CommandGroup& group) {
  SavedGroup& saved = SavedPlace(group);
  std::vector<long> user_ids = UserIdsOf(group);
  const bool as_before = !group.ignores_previous && saved.item_user_ids == user_ids;
  if (!as_before) {
    saved.command_ids.clear();
    for (std::size_t item = 0; item < group.items.size(); ++item) {
      saved.command_ids.push_back(++m_memory.last_command_id);
    }
  }
  saved.item_user_ids = std::move(user_ids);
  for (std::size_t item = 0; item < group.items.size(); ++item) {
    group.items[item].command_id = saved.command_ids[item];
  }
  group.active = true;
  Remember();
}

std::shared_ptr<CommandTab> CommandInterface::AddTab(long document_type, const std::wstring& name) {
  auto tab = std::make_shared<CommandTab>();
  tab->document_type = document_type;
  tab->name = name;
  m_memory.tabs.push_back(tab);
  Remember();
  return tab;
}

std::shared_ptr<CommandTab> CommandInterface::FindTab(long document_type, const std::wstring& name) const {
  const auto found = std::find_if(m_memory.tabs.begin(), m_memory.tabs.end(), [&](const auto& tab) {
    return tab->document_type == document_type && tab->name == name;
  });
  return found == m_memory.tabs.end() ? nullptr : *found;
}

bool CommandInterface::RemoveTab(const std::shared_ptr<CommandTab>& tab) {
  const bool removed = std::erase(m_memory.tabs, tab) > 0;
  Remember();
  return removed;
}

IconList CommandInterface::ReadIcons(const std::wstring& path) {
  IconList icons;
  icons.path = path;
  std::ifstream file(path.c_str(), std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  BITMAPFILEHEADER header{};
  BITMAPINFOHEADER info{};
  if (bytes.size() < sizeof header + sizeof info) return icons;
  std::memcpy(&header, bytes.data(), sizeof header);
  std::memcpy(&info, bytes.data() + sizeof header, sizeof info);
  constexpr WORD kBitmapMark = 0x4d42;  // "BM"
  icons.is_bitmap = header.bfType == kBitmapMark && info.biSize >= sizeof info;
  if (icons.is_bitmap) {
    icons.width = info.biWidth;
    icons.height = info.biHeight;
    icons.file = std::move(bytes);
  }
  return icons;
}

}  // namespace cad_host
