/// @file The names under which the platform keeps the add-in's files. PlmClient.json is named by its reader.
#pragma once

/// The configuration's name, which is that of its folder.
inline constexpr const wchar_t* kConfigurationName = L"New TAVO SolidWorks AddOn";

/// The menu and the toolbar.
inline constexpr const wchar_t* kViewFile = L"View.json";

/// The configuration of the log.
inline constexpr const wchar_t* kLogPropertiesFile = L"Log4cplus.properties";

/// The name of the log without a configuration.
inline constexpr const wchar_t* kLogApplication = L"SolidWorks";
