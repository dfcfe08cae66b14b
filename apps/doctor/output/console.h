/// @file Printing.
#pragma once

#include <string>

namespace doctor {

/// Prints `text` to the standard output, or to the standard error: in any script to a console, as UTF-8 to a
/// file or pipe.
void Print(const std::wstring& text);
void PrintError(const std::wstring& text);

}  // namespace doctor
