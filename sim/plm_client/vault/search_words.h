/// @file The words of a search, as a condition of SQL.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace plm_vault {

/// The words of `text`, separated by blanks, as patterns for LIKE that find them anywhere, with '\' as escape
/// character.
std::vector<std::wstring> SearchPatterns(std::wstring_view text);

/// "(EXPRESSION LIKE ? ESCAPE '\') AND ..." with a parameter for each of `count` patterns; true without any.
std::string SearchCondition(const std::string& expression, std::size_t count);

}  // namespace plm_vault
