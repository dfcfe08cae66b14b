/// @file UTF-8 for the file streams of the logging library.
#pragma once

#include <locale>

/// A locale with which a wide output stream writes UTF-8. The two halves of a surrogate pair may be written
/// separately; a lone surrogate is written as U+FFFD. No text makes the stream fail. Not for reading.
std::locale Utf8Locale();

/// Registers Utf8Locale(), kUtf8LocaleName, with the logging library.
void RegisterUtf8Locale();
