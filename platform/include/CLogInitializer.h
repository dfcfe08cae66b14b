/// @file Starting and ending the log.
#pragma once

#include <string>

/// Starts the log and ends it: the object that started the log ends it in its destructor; later events go to
/// the debugger. With a static object the log ends when the module is unloaded.
class CLogInitializer {
 public:
  CLogInitializer() = default;
  CLogInitializer(const CLogInitializer&) = delete;
  CLogInitializer& operator=(const CLogInitializer&) = delete;
  ~CLogInitializer();

  /// Whether the log of this module is running.
  static bool Initialized() noexcept;

  /// Starts the log if it is not running yet: with `propertiesFile` if it exists and assigns an appender to
  /// some logger, else with a UTF-8 file `<folder>\<application>.log` of up to 10 MB, keeping five old files.
  /// If the folder is not writable, the log counts as running; every event tries again, and goes to the
  /// debugger if it still cannot be written. Each fault in the properties file is logged under "platform"
  /// with its key and value; what cannot be followed is replaced, so that no event is lost.
  /// @return whether the log is running; false for an empty folder. Never throws.
  bool Initialize(const std::wstring& folder, const std::wstring& application,
                  const std::wstring& propertiesFile) noexcept;

 private:
  bool m_isOwner = false;
};
