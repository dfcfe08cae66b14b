/// @file UTF-8 for the file streams of the logging library.
#pragma once

#include <locale>

/// The name under which an appender's property `Locale` finds Utf8Locale().
inline constexpr wchar_t kUtf8LocaleName[] = L"UTF8";

/// A locale with which a wide output stream writes UTF-8. Pairs of surrogates may arrive in pieces; a lone
/// surrogate is written as U+FFFD. No text makes the stream fail. Not for reading.
std::locale Utf8Locale();

/// Makes Utf8Locale() known to the logging library.
void RegisterUtf8Locale();
