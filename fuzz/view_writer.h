/// @file Views, right ones and such with mistakes.
#pragma once

#include <cstddef>
#include <string>

#include "choices.h"

namespace fuzz {

/// A View.json that has a menu, and how many mistakes are in what is looked at.
struct WrittenView {
  std::string json;
  std::size_t mistakes;
};

/// The command that a written view may name, and its enable method.
inline constexpr const wchar_t* kCommand = L"Login";
inline constexpr const wchar_t* kEnableMethod = L"LoginEnable";

/// @param maximum_items what is in further items is no mistake.
/// @param icons how many icons there are; 2 at least.
WrittenView WriteView(Choices choices, std::size_t maximum_items, int icons);

}  // namespace fuzz
