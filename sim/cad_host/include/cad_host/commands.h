/// @file The command interface as the person sees it: groups with their items, and command tabs.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace cad_host {

/// An icon list as it was when the host read it: add-ins delete the file afterwards.
struct IconList {
  std::wstring path;
  bool is_bitmap = false;  ///< the file existed and was a bitmap
  long width = 0;          ///< in pixels
  long height = 0;
  std::string file = {};  ///< the bytes of the bitmap's file
};

struct CommandItem {
  std::wstring name;
  long position = 0;
  std::wstring hint;
  std::wstring tool_tip;
  long image_index = 0;
  std::wstring callback;
  std::wstring enable_method;
  long user_id = 0;
  long command_id = 0;  ///< 0 until the group is activated
};

/// How an item is shown.
struct ItemState {
  bool enabled = true;   ///< false: greyed out
  bool pressed = false;  ///< with a check mark, or as a button that is down
  bool operator==(const ItemState&) const = default;
};

/// A menu and toolbar of one add-in. It stays until it is removed, even after its add-in has disconnected.
struct CommandGroup {
  std::wstring add_in;  ///< key of the add-in; see AddIn::Key
  long user_id = 0;
  std::wstring title;
  std::wstring tool_tip;
  std::wstring hint;
  long position = 0;
  bool ignores_previous = false;
  IconList small_icons;
  IconList large_icons;
  bool has_toolbar = false;
  bool has_menu = false;
  bool active = false;
  std::vector<CommandItem> items;
};

/// A command in a tab box. If `id` belongs to a command that no longer exists, the button does nothing.
struct TabCommand {
  long id = 0;
  long text_style = 0;
};

struct CommandTabBox {
  std::vector<TabCommand> commands;
};

/// A tab of the ribbon for one document type. Names are not unique. Tabs are stored for the next session.
struct CommandTab {
  long document_type = 0;
  std::wstring name;
  bool visible = false;
  std::vector<std::shared_ptr<CommandTabBox>> boxes;
};

/// What the host stores about a group that was activated.
struct SavedGroup {
  std::wstring add_in;
  long user_id = 0;
  std::vector<long> item_user_ids;
  std::vector<long> command_ids;
};

}  // namespace cad_host
