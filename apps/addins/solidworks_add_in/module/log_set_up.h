/// @file The log's set-up.
#pragma once

/// Sets the log up where this process has not done so yet: in the platform's log folder, as its
/// Log4cplus.properties says. It ends when the DLL is unloaded.
/// @return whether there is a log now.
bool InitialiseLog() noexcept;
