/// @file The add-in as it is first loaded.
#pragma once

#include <gtest/gtest.h>

#include <objbase.h>

#include <optional>
#include <string>

#include "cad_host/host.h"
#include "environment.h"
#include "message_boxes.h"
#include "module/add_in_dll.h"
#include "temp_folder.h"

/// The DLL is loaded anew in each test, with a platform folder of the test's own, since it sets its log up
/// once in its life. There is no PLM client, and no message box is expected.
class FreshDllTest : public testing::Test {
 protected:
  FreshDllTest();
  void TearDown() override;

  /// Loads the DLL, registers it and starts the host.
  void Load(const std::wstring& path = AddInDll::BuiltPath());

  cad_host::AddIn& Connect() { return m_host->Connect(L"TAVO SolidWorks Integration"); }

  /// The full path of a file in the configuration folder.
  std::wstring ConfigurationPath(const std::wstring& name) const;

  ComApartment m_apartment;
  TempFolder m_folder;
  ScopedEnvironment m_home;
  MessageBoxRecorder m_noBoxes;
  std::optional<AddInDll> m_dll;
  std::optional<cad_host::Host> m_host;
};
