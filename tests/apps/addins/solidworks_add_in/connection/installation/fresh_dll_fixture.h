/// @file The first load of the add-in.
#pragma once

#include <gtest/gtest.h>

#include <objbase.h>

#include <optional>
#include <string>
#include <vector>

#include "cad_host/host.h"
#include "environment.h"
#include "message_boxes.h"
#include "module/add_in_dll.h"
#include "temp_folder.h"

/// Each test loads the DLL again and has a platform folder of its own, because the DLL sets up its log only
/// once while it is loaded. There is no PLM client; a message box that a test does not expect fails
/// the test.
class FreshDllFixture : public testing::Test {
 protected:
  FreshDllFixture();
  void TearDown() override;

  /// Loads the DLL, registers it and starts the host.
  void Load() { Load(AddInDll::BuiltPath()); }

  /// The same with a copy of the DLL in the folder "add-in" of m_folder, without the default configuration.
  /// At the end it is unregistered. @return its path.
  std::wstring LoadCopy();

  cad_host::AddIn& Connect() { return m_host->Connect(L"TAVO SolidWorks Integration"); }

  /// The lines of a file in the log folder.
  std::vector<std::wstring> LogFileLines(const std::wstring& name = L"SolidWorks.log") const;

  /// The full path of a file in the configuration folder.
  std::wstring ConfigurationPath(const std::wstring& name) const;

  ComApartment m_apartment;
  TempFolder m_folder;
  ScopedEnvironment m_home;
  MessageBoxRecorder m_boxes;
  std::optional<AddInDll> m_dll;
  std::optional<cad_host::Host> m_host;

 private:
  void Load(const std::wstring& path);

  bool m_isCopy = false;
};
