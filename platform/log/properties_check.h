/// @file Faults in a configuration of the log.
#pragma once

#include <log4cplus/helpers/property.h>

#include <string>
#include <vector>

#include "built_in_set_up.h"

/// Makes `properties` usable, so that no event is lost: removes every key that is unknown and every value
/// that cannot be followed, so that the default holds. If an appender cannot be used, and its logger has no
/// other file, the root logger gets the appender of the built-in set-up. A relative path of a file becomes a
/// path in `log_folder`. A log file that is missing is created.
/// @param properties all keys below "log4cplus.", without it; variables are already replaced.
/// @return one text for each fault: `log4cplus.KEY: "VALUE" ` and what is wrong.
std::vector<std::wstring> CorrectProperties(log4cplus::helpers::Properties& properties,
                                            const std::wstring& log_folder, const LogPlace& built_in);
