/// @file What an exception says to the person at the console.
#pragma once

#include <string>

namespace cad_host {

/// The message of the exception that is being handled, whatever its kind; to be called in a catch block.
std::wstring TextOfException();

}  // namespace cad_host
