/// @file The commands of add-ins as the window shows them in menus, toolbars and command tabs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cad_host/host.h"

namespace cad_host {

/// An item of a command group with its number in menus and toolbars.
struct AddInItem {
  int id = 0;
  std::wstring add_in;                        ///< key of the add-in; see AddIn::Key
  std::shared_ptr<const CommandGroup> group;  ///< that the item is in
  CommandItem item;
  ItemState state;
};

class AddInItems {
 public:
  static constexpr int kFirstId = 30000;

  explicit AddInItems(Host& host) : m_host(host) {}

  /// Collects the items of all active groups anew. @return whether anything is different.
  bool Update();

  /// Calls the enable methods of all items. Items of an add-in that has disconnected are greyed out.
  /// @return whether any state is different.
  bool UpdateStates();

  const std::vector<AddInItem>& All() const { return m_items; }

  /// The item with this number in menus and toolbars; null if there is none.
  const AddInItem* Find(int id) const;

  /// The item with the command id of the add-in's tabs; null if there is none.
  const AddInItem* FindCommand(long command_id) const;

  /// The words of the action that picks the item.
  std::vector<std::wstring> PickWords(const AddInItem& item) const;

 private:
  AddIn* Connected(const std::wstring& key) const;

  Host& m_host;
  std::vector<AddInItem> m_items;
};

}  // namespace cad_host
