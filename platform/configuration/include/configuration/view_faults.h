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

/// The same for `view` as it was read. What keeps the menu from being built, such as a missing "Menu", is
/// then the only fault.
std::vector<std::wstring> FindViewFaults(const CJsonObject& view, const ViewRules& rules);

/// Unknown keys of `view` that resemble a known one. The add-in ignores unknown keys, so that these are no
/// faults, but probably slips: `item 2 "Search": "CallBackFunction" is not known; "CallbackFunction" is`.
std::vector<std::wstring> FindViewSlips(const CJsonObject& view);
