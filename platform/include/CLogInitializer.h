/// @file Setting the log up.
#pragma once

#include <string>

/// Owns the log's set-up: the object that set the log up shuts it down when it is destroyed, after which
/// events are dropped. A static object of the module does it when the module is unloaded.
class CLogInitializer {
 public:
  CLogInitializer() = default;
  CLogInitializer(const CLogInitializer&) = delete;
  CLogInitializer& operator=(const CLogInitializer&) = delete;
  ~CLogInitializer();

  /// Whether the log of this module is set up.
  static bool Initialized() noexcept;

  /// Sets the log up, unless it is set up already: from `propertiesFile` if it exists and gives some
  /// logger an appender, else with a UTF-8 file `<folder>\<application>.log` of 10 MB, five old files kept.
  /// A folder that cannot be written counts as set up: every event tries again. What is wrong with the
  /// properties file is logged under "platform".
  /// @return whether the log is set up; false for an empty folder. Never throws.
  bool Initialize(const std::wstring& folder, const std::wstring& application,
                  const std::wstring& propertiesFile) noexcept;

 private:
  bool m_isOwner = false;
};
