/// @file What is wrong in a View.json that can be read, for the log and for whoever asks why a command does
/// nothing.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "CJsonObject.h"

/// The capacity of a command tab box of the CAD application; further items are not added to the menu either.
inline constexpr std::size_t kMaximumMenuItems = 16;

/// What the menu can show and run.
struct ViewRules {
  std::size_t maximum_items;  ///< further items are not added
  int icons;                  ///< their numbers begin with 0
  std::function<bool(const std::wstring& name)> is_command;
  std::function<bool(const std::wstring& name)> is_enable_method;
};

/// @param items  the menu of `view`, with all of its items.
/// @return one line for each mistake, which names the item by its number from 1 and its name, and the key:
///         `item 2 "Search": "Hint" is missing`. Mistakes of the whole file come first. Items after the
///         maximum are counted, not looked at.
std::vector<std::wstring> FindViewFaults(const CJsonObject& view,
                                         const std::vector<CJsonObject::Pointer>& items,
                                         const ViewRules& rules);
