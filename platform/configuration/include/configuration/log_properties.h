/// @file A configuration of the log: reading it, and what is wrong in it.
#pragma once

#include <log4cplus/helpers/property.h>

#include <optional>
#include <string>
#include <vector>

#include "configuration/built_in_log.h"
#include "configuration/log_files.h"

/// The variable for the log folder.
inline constexpr wchar_t kLogFolderVariable[] = L"LogFolder";

/// The properties in the UTF-8 file at `path`, with or without a byte-order mark. `LogFolder` is `log_folder`
/// unless the file sets it.
/// @return nothing if the file cannot be read.
std::optional<log4cplus::helpers::Properties> ReadLogProperties(const std::wstring& path,
                                                                const std::wstring& log_folder);

/// Makes `properties` usable, so that no event is lost: removes every key that is unknown and every value
/// that cannot be followed, so that the default holds. If an appender cannot be used, and its logger has no
/// other file, the root logger gets the appender of the built-in set-up. A relative path of a file becomes a
/// path in `log_folder`. Whether a log file can be opened is asked of `files`.
/// @param properties all keys below "log4cplus.", without it; variables are already replaced.
/// @return one text for each fault: `log4cplus.KEY: "VALUE" ` and what is wrong.
std::vector<std::wstring> CorrectProperties(log4cplus::helpers::Properties& properties,
                                            const std::wstring& log_folder, const LogPlace& built_in,
                                            LogFiles& files);

/// The faults of the file at `path` that make it useless: it cannot be read, or names no appender.
std::wstring LogNotReadable(const std::wstring& path);
std::wstring LogWithoutAppender(const std::wstring& path);

/// The faults of the configuration of the log at `path`: those that CorrectProperties finds, and what makes
/// it useless. Each names the path. Has no effect on the log files that it names.
/// @param files  tells the log files that can be written.
std::vector<std::wstring> FindLogFaults(const std::wstring& path, const LogPlace& built_in,
                                        ExaminedLogFiles& files);
