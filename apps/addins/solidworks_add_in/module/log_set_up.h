/// @file Starting the add-in's log.
#pragma once

/// The name under which the platform keeps the add-in's configuration.
inline constexpr const wchar_t* kConfigurationName = L"New TAVO SolidWorks AddOn";

/// Starts the log if this process has not done so yet: in the platform's log folder, as its
/// Log4cplus.properties says. The log ends when the DLL is unloaded.
/// @return false if there is no log, or no memory for its first line.
bool InitialiseLog() noexcept;
