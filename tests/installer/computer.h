/// @file The computer on which packages are installed: a Wine prefix of this program's own.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "snapshot.h"
#include "temp_folder.h"

namespace computer {

/// Where the package puts its files, without a separator at the end.
inline const std::wstring kInstallFolder = L"C:\\Program Files\\TAVO\\SolidWorks Integration";
inline const std::wstring kDll = kInstallFolder + L"\\solidworks_add_in.dll";

/// The add-in's key among the host's add-ins, below the computer's root.
inline const std::wstring kHostsKey = L"SOFTWARE\\SolidWorks\\AddIns\\{555D9E80-10EC-45A2-9712-D43E5E66F163}";

/// The package of this version and that of a later one.
std::wstring ThisPackage();
std::wstring NextPackage();

/// The path of a file or folder among the programs that were built.
std::wstring BuiltFile(std::wstring_view name);

/// Runs a command line and waits until it ends, at most a minute. @return its exit code, or -1 if it cannot
/// be started or does not end.
DWORD RunAndWait(const std::wstring& command);

/// Runs msiexec with `arguments` in silence. @return its exit code.
DWORD Msiexec(const std::wstring& arguments);

/// Repairs what is installed, as `msiexec /fa` does, which Wine's msiexec does not know.
DWORD Repair(const std::wstring& properties = {});

/// Installs `package` in this process, which shows message boxes. @return the result as msiexec would exit
/// with it.
unsigned InstallHere(const std::wstring& package, const std::wstring& properties = {});

/// An entry in the system's list of programs.
struct Product {
  std::wstring code;
  std::wstring name;
  std::wstring version;
  std::wstring publisher;
};
/// The entries of the maker TAVO.
std::vector<Product> Products();

/// A text or number of the computer's part of the registry as text; empty if it is not there.
std::wstring MachineValue(const std::wstring& key, const std::wstring& name = {});

/// The version in the resources of a DLL or program, such as L"1.5.0.0".
std::wstring FileVersion(const std::wstring& path);

/// All files and registry entries, but for what the system changes by itself.
Snapshot Look();

/// Where the installer keeps its account of what is installed, and the list of programs.
std::vector<std::wstring> InstallersOwn();

/// Each test begins and ends on a computer that has never had the package: what a test leaves installed is
/// removed, and the test fails if anything of it stays. Files that a person made are the test's own to
/// remove.
class InstallerTest : public testing::Test {
 protected:
  InstallerTest();
  void TearDown() override;

  /// What has changed since the test began, but for the installer's own account.
  std::vector<std::wstring> ChangesSoFar() const;

  TempFolder m_folder;
};

}  // namespace computer
