/// @file Names of the add-in's own in a configuration of the log.
#pragma once

/// The type of the appender whose file several processes may write.
inline constexpr wchar_t kSharedFileAppenderName[] = L"tavo::SharedFileAppender";

/// UTF-8 in an appender's property `Locale`.
inline constexpr wchar_t kUtf8LocaleName[] = L"UTF8";
