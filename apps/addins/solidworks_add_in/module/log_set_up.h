/// @file Starting the add-in's log.
#pragma once

/// Starts the log if it is not running yet: in the platform's log folder, configured by the
/// Log4cplus.properties there. It ends when the DLL is unloaded.
/// @return whether the log is running.
bool InitialiseLog() noexcept;
