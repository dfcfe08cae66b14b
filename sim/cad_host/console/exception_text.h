/// @file The text of an exception for the console.
#pragma once

#include <string>

namespace cad_host {

/// The message of the exception that is being handled, of any kind; must be called in a catch block.
std::wstring TextOfException();

}  // namespace cad_host
