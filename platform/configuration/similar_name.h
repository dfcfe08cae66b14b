/// @file Names that were probably meant to be others.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CJsonObject.h"

/// The one of `known` that a person who wrote `name` probably meant: they differ in case only, or in at most
/// two characters that are missing, added or replaced, but not in most of them. Empty if `name` is known, or
/// if it resembles none.
std::wstring_view FindSimilarName(std::wstring_view name, std::span<const std::wstring_view> known);

/// Adds a text for each member of `object` that is not known, but resembles one that is:
/// PLACE`"Client" is not known; "client" is`.
void AddSimilarNames(std::vector<std::wstring>& slips, const std::wstring& place, const CJsonObject& object,
                     std::span<const std::wstring_view> known);
