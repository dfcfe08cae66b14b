/// @file The fixture of the tests of the diagnosis program.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <optional>
#include <string>

#include "environment.h"
#include "module/add_in_dll.h"
#include "registry_change.h"
#include "run.h"
#include "temp_folder.h"

/// The program that is tested, in the build folder.
std::wstring DoctorPath();

/// `report` as its user reads it, for messages of tests.
std::string Describe(const doctor::Report& report);

/// The add-in as regsvr32 registers it, and folders of the platform that belong to the test. Every test
/// begins with a healthy set-up, but without a PLM client.
class DoctorFixture : public testing::Test {
 protected:
  DoctorFixture();
  ~DoctorFixture() override;

  /// The findings of one area, after the checks of that area only.
  doctor::Report Check(const char* area) const;

  /// Expects a finding of this kind whose text contains `text`, and that what failed comes with an advice.
  static void ExpectFinding(const doctor::Report& report, const std::string& id, doctor::Status status,
                            const std::wstring& text);

  /// Expects that every finding is fine, or that there was nothing to check.
  static void ExpectHealthy(const doctor::Report& report);

  void Unregister() const { m_dll.UnregisterServer(); }

  /// Writes a configuration file of the user.
  void Configure(const std::wstring& file, std::string_view bytes) const;

  /// A copy of the library in the test's folder, of whose bytes each `from` is replaced by `to`. It is
  /// registered for the add-in's class during the test.
  std::wstring RegisterCopy(const std::string& from = {}, const std::string& to = {});

  /// Registers another library for the add-in's class during the test.
  void RegisterLibrary(const std::wstring& path);

  /// The machine's key of the add-in's class.
  static std::wstring ClassKey();
  static std::wstring ClassId();

  TempFolder m_folder;
  std::chrono::milliseconds m_patience{20'000};
  std::wstring m_program = DoctorPath();
  ScopedEnvironment m_home{L"TAVO_HOME", m_folder.Path(L"home")};
  ScopedEnvironment m_allUsers{L"PROGRAMDATA", m_folder.Path(L"all users")};

 private:
  ComApartment m_com;
  AddInDll m_dll;
  std::optional<RegistryChange> m_otherLibrary;
};
