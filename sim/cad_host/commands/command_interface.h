/// @file Command groups and command tabs, and what is stored about them for the next session.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cad_host/commands.h"
#include "command_store.h"

namespace cad_host {

class CommandInterface {
 public:
  /// @throws HostError; see CommandStore.
  explicit CommandInterface(const std::wstring& state_folder);

  const std::vector<std::shared_ptr<CommandGroup>>& Groups() const { return m_groups; }
  const std::vector<std::shared_ptr<CommandTab>>& Tabs() const { return m_memory.tabs; }

  /// @return null if the add-in has a group with this user id already.
  std::shared_ptr<CommandGroup> CreateGroup(CommandGroup group);

  std::shared_ptr<CommandGroup> FindGroup(const std::wstring& add_in, long user_id) const;

  /// @return false if there is no such group. What is stored about the group stays.
  bool RemoveGroup(const std::wstring& add_in, long user_id);

  /// Shows the group and stores the user ids of its items. If the same items were shown before, their
  /// commands keep their ids, unless the group ignores its previous version.
  void Activate(CommandGroup& group);

  const SavedGroup* FindSaved(const std::wstring& add_in, long user_id) const;

  /// Adds a tab, even if other tabs have the same name.
  std::shared_ptr<CommandTab> AddTab(long document_type, const std::wstring& name);

  /// The first tab with the name; null if there is none.
  std::shared_ptr<CommandTab> FindTab(long document_type, const std::wstring& name) const;

  bool RemoveTab(const std::shared_ptr<CommandTab>& tab);

  /// Stores the data for the next session. Must be called after a tab was changed.
  void Remember() const { m_store.Write(m_memory); }

  /// Reads the file of an icon list.
  static IconList ReadIcons(const std::wstring& path);

 private:
  SavedGroup& SavedPlace(const CommandGroup& group);

  CommandStore m_store;
  CommandMemory m_memory;
  std::vector<std::shared_ptr<CommandGroup>> m_groups;
};

}  // namespace cad_host
