/// @file The logging library's reader of a configuration.
#pragma once

#include <log4cplus/configurator.h>
#include <log4cplus/helpers/property.h>
#include <log4cplus/hierarchy.h>
#include <log4cplus/logger.h>

/// Configures the logging library with properties whose faults are corrected.
class LogConfigurator : public log4cplus::PropertyConfigurator {
 public:
  explicit LogConfigurator(const log4cplus::helpers::Properties& file)
      : PropertyConfigurator(file, log4cplus::Logger::getDefaultHierarchy(), fShadowEnvironment) {}

  /// The keys below "log4cplus.", without it; variables are already replaced.
  log4cplus::helpers::Properties& Settings() { return properties; }
};
