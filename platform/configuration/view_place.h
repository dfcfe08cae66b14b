/// @file Places in a View.json, for messages.
#pragma once

#include <cstddef>
#include <string>

#include "CJsonObject.h"

/// `text` in quotes and in one line.
std::wstring Quoted(std::wstring text);

/// The beginning of each text about the item number `index`, from 0: `item 1 "NAME": `.
std::wstring PlaceOf(std::size_t index, const CJsonObject& item);
