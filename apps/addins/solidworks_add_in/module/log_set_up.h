/// @file Starting the add-in's log.
#pragma once

/// The name under which the platform keeps the add-in's configuration.
inline constexpr const wchar_t* kConfigurationName = L"New TAVO SolidWorks AddOn";

/// Sets the log up where this process has not done so yet: in the platform's log folder, as its
/// Log4cplus.properties says. It ends when the DLL is unloaded.
/// @return whether there is a log now.
bool InitialiseLog() noexcept;
