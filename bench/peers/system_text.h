/// @file Text conversion by the system's functions.
#pragma once

#include <string>
#include <string_view>

std::string SystemEncode(std::wstring_view text);
std::wstring SystemDecode(std::string_view text);
