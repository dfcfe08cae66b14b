/// @file Names whose values are login data.
#pragma once

#include <string_view>

namespace doctor {

/// Whether `name`, UTF-8, is that of a password, a token, a user and the like.
bool IsSensitiveName(std::string_view name);

/// Whether `c` can be part of a name without quotes.
bool IsNameCharacter(char c);

/// Whether `word` is the second word of a name, as in "user name".
bool EndsTwoWords(std::string_view word);

/// Compares ASCII without regard to case; `lower` is in lower case.
bool EqualButForCase(std::string_view text, std::string_view lower);

}  // namespace doctor
