/// @file The folders and configuration files that a measurement needs.
#pragma once

#include <string>
#include <string_view>

#include "environment.h"
#include "temp_folder.h"

/// A platform folder in a temporary folder, during the lifetime of the object.
class BenchHome {
 public:
  BenchHome() : m_home(L"TAVO_HOME", m_folder.Path()) {}

  /// Writes a file into the configuration folder.
  void Configure(const std::wstring& file, std::string_view bytes) const {
    m_folder.Write(L"config\\New TAVO SolidWorks AddOn\\" + file, bytes);
  }

  const TempFolder& Folder() const { return m_folder; }

 private:
  TempFolder m_folder;
  ScopedEnvironment m_home;
};
