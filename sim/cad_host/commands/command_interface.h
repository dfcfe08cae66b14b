/// @file Command groups and command tabs, and what of them outlives the session.
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

  /// @return null where the add-in has a group with this user id.
  std::shared_ptr<CommandGroup> CreateGroup(CommandGroup group);

  std::shared_ptr<CommandGroup> FindGroup(const std::wstring& add_in, long user_id) const;

  /// @return false where there is no such group. What is remembered of it stays.
  bool RemoveGroup(const std::wstring& add_in, long user_id);

  /// Shows the group and remembers the user ids of its items. The commands keep the ids that they had
  /// when the same items were shown before, unless the group ignores that.
  void Activate(CommandGroup& group);

  const SavedGroup* FindSaved(const std::wstring& add_in, long user_id) const;

  /// Always another tab, whatever tabs have the name.
  std::shared_ptr<CommandTab> AddTab(long document_type, const std::wstring& name);

  /// The first tab with the name; null if there is none.
  std::shared_ptr<CommandTab> FindTab(long document_type, const std::wstring& name) const;

  bool RemoveTab(const std::shared_ptr<CommandTab>& tab);

  /// Writes down what outlives the session; needed after a tab was changed.
  void Remember() const { m_store.Write(m_memory); }

  /// Looks at the file of an icon list.
  static IconList LookAtIcons(const std::wstring& path);

 private:
  SavedGroup& SavedPlace(const CommandGroup& group);

  CommandStore m_store;
  CommandMemory m_memory;
  std::vector<std::shared_ptr<CommandGroup>> m_groups;
};

}  // namespace cad_host
