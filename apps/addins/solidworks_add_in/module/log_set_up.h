/// @file Starting the add-in's log.
#pragma once

/// Starts the log if this process has not done so yet: in the platform's log folder, as its
/// Log4cplus.properties says. The log ends when the DLL is unloaded.
/// @return false if there is no log, or no memory for its first line.
bool InitialiseLog() noexcept;
