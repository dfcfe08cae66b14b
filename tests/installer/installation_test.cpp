// What an installation puts on the computer, and what it leaves alone.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "base/unique_registry_key.h"
#include "base/utf8.h"
#include "computer.h"
#include "list_difference.h"
#include "message_boxes.h"
#include "program_folder.h"

namespace {

using namespace computer;
using Lines = std::vector<std::wstring>;

/// Where 32-bit programs have entries and files of their own. Registering a type library writes its
/// interfaces for them, too; no 32-bit program uses the add-in.
const Lines k32Bit = {L"HKLM\\Software\\Wow6432Node", L"HKLM\\Software\\Classes\\Wow6432Node",
                      L"C:\\Program Files (x86)"};

const std::wstring kWindows = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

bool Contains(const std::wstring& text, const std::wstring& part) { return text.find(part) != text.npos; }

class Installation : public InstallerTest {
 protected:
  /// What registering the DLL at `path` writes to the registry. Afterwards the computer is as before.
  Lines WhatRegisteringWrites(const std::wstring& path) const {
    const Snapshot before = Look();
    EXPECT_EQ(RunAndWait(L"regsvr32 /s \"" + path + L"\""), 0u);
    Lines written = ChangesBelow(Changes(before, Look()), {L"HK"});
    EXPECT_EQ(RunAndWait(L"regsvr32 /u /s \"" + path + L"\""), 0u);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\SolidWorks");  // which unregistering leaves to the host
    return written;
  }
};

/// A copy of the DLL in a folder of its own, as an administrator made it before there was a package.
class CopiedDll {
 public:
  explicit CopiedDll(const std::wstring& folder) {
    for (std::size_t at = folder.find(L'\\', 3); at != folder.npos; at = folder.find(L'\\', at + 1)) {
      AddFolder(folder.substr(0, at));
    }
    AddFolder(folder);
    m_path = folder + L"\\solidworks_add_in.dll";
    EXPECT_TRUE(CopyFileW(BuiltFile(L"solidworks_add_in.dll").c_str(), m_path.c_str(), TRUE));
  }
  CopiedDll(const CopiedDll&) = delete;
  CopiedDll& operator=(const CopiedDll&) = delete;
  ~CopiedDll() {
    EXPECT_TRUE(DeleteFileW(m_path.c_str()));
    for (auto folder = m_folders.rbegin(); folder != m_folders.rend(); ++folder)
      RemoveDirectoryW(folder->c_str());
  }

  const std::wstring& Path() const { return m_path; }

 private:
  void AddFolder(const std::wstring& folder) {
    if (CreateDirectoryW(folder.c_str(), nullptr)) m_folders.push_back(folder);
  }

  Lines m_folders;
  std::wstring m_path;
};

/// The names of the documents, as the package's list has them.
Lines Documents() {
  Lines names;
  std::ifstream list(SourceFile(L"installer\\documents.txt").c_str());
  for (std::string line; std::getline(list, line);) {
    const std::size_t start = line.rfind('/') + 1;
    names.push_back(L"docs\\" + utf8::Decode<wchar_t>(line.substr(start, line.rfind('.') - start)) +
                    L".html");
  }
  return names;
}

/// The files below `folder`, relative to it.
Lines FilesBelow(const std::wstring& folder) {
  Lines files;
  for (const auto& [name, what] : TakeSnapshot({{folder}, {}, {}})) {
    if (name.back() != L'\\') files.push_back(name.substr(folder.size() + 1));
  }
  return files;
}

TEST_F(Installation, WritesTheEntriesThatRegisteringWrites) {
  Lines registered;
  {
    const CopiedDll dll(kInstallFolder);
    registered = WhatRegisteringWrites(dll.Path());
  }
  ASSERT_FALSE(registered.empty());

  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);

  EXPECT_PRED_FORMAT2(SameEntries, ChangesBelow(ChangesSoFar(), {L"HK"}),
                      ChangesNotBelow(registered, k32Bit));
}

TEST_F(Installation, PutsItsFilesIntoOneFolder) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);

  Lines expected = Documents();
  expected.push_back(L"solidworks_add_in.dll");
  for (const std::wstring& file : FilesBelow(BuiltFile(L"config"))) expected.push_back(L"config\\" + file);
  expected.push_back(L"tavo_doctor.exe");
  std::sort(expected.begin(), expected.end());
  Lines installed = FilesBelow(kInstallFolder);
  std::erase_if(installed, [](const std::wstring& file) { return file.find(L"docs\\pictures\\") == 0; });
  EXPECT_EQ(installed, expected);
  EXPECT_PRED_FORMAT2(SameEntries, ChangesNotBelow(ChangesSoFar(), {L"HK", L"C:\\Program Files\\TAVO\\"}),
                      Lines{});
}

TEST_F(Installation, IsListedOnceWithVersionAndPublisher) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  const std::vector<Product> products = Products();
  ASSERT_EQ(products.size(), 1u);
  EXPECT_EQ(products[0].name, L"TAVO SolidWorks Integration");
  EXPECT_EQ(products[0].version, PRODUCT_VERSION);
}

TEST_F(Installation, WritesNothingFor32BitPrograms) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  EXPECT_PRED_FORMAT2(SameEntries, ChangesBelow(ChangesSoFar(), k32Bit), Lines{});
}

TEST_F(Installation, TakesTheEntriesOfARegisteredCopyOver) {
  const CopiedDll dll(L"C:\\by hand");
  ASSERT_EQ(RunAndWait(L"regsvr32 /s \"" + dll.Path() + L"\""), 0u);

  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);

  const Lines entries = ChangesBelow(ChangesSoFar(), {L"HK"});
  EXPECT_TRUE(
      std::any_of(entries.begin(), entries.end(), [](const auto& line) { return Contains(line, kDll); }));
  EXPECT_TRUE(std::none_of(entries.begin(), entries.end(),
                           [&](const auto& line) { return Contains(line, dll.Path()); }));
  ASSERT_EQ(Msiexec(L"/x " + ThisPackage()), 0u);
  for (const wchar_t* const left :
       {L"{74AB86A3-9790-49D8-86D3-C38692C01B88}", L"{B726E794-32BB-4D6D-A6BF-648845871B2E}"}) {
    const std::wstring path = L"SOFTWARE\\Classes\\Wow6432Node\\Interface\\";
    EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, (path + left).c_str()), ERROR_SUCCESS) << "of the copy";
  }
}

/// Another add-in, and a user's own choice, in the host's part of the registry.
class Neighbours {
 public:
  Neighbours() {
    Set(HKEY_LOCAL_MACHINE, L"AddIns\\{00000000-1111-2222-3333-444444444444}", L"Title");
    Set(HKEY_LOCAL_MACHINE, L"AddIns", L"Setting");
    Set(HKEY_CURRENT_USER, L"AddInsStartup", L"{555D9E80-10EC-45A2-9712-D43E5E66F163}");
  }
  Neighbours(const Neighbours&) = delete;
  Neighbours& operator=(const Neighbours&) = delete;
  ~Neighbours() {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kHost);
    RegDeleteTreeW(HKEY_CURRENT_USER, kHost);
  }

 private:
  static constexpr const wchar_t* kHost = L"SOFTWARE\\SolidWorks";

  static void Set(HKEY root, const std::wstring& key, const wchar_t* name) {
    const std::wstring path = std::wstring(kHost) + L"\\" + key;
    EXPECT_EQ(RegSetKeyValueW(root, path.c_str(), name, REG_SZ, L"1", 2 * sizeof(wchar_t)), ERROR_SUCCESS);
  }
};

TEST_F(Installation, LeavesOtherAddInsAlone) {
  const Neighbours neighbours;
  const Snapshot before = Look();
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  ASSERT_EQ(Msiexec(L"/x " + ThisPackage()), 0u);
  EXPECT_PRED_FORMAT2(SameEntries, Changes(before, Look()), Lines{});
}

/// Writes a text to a key of the computer's classes, as another program does.
void SetForeignValue(const std::wstring& key) {
  const std::wstring path = L"SOFTWARE\\Classes\\" + key;
  EXPECT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, path.c_str(), L"Foreign", REG_SZ, L"1", 2 * sizeof(wchar_t)),
            ERROR_SUCCESS);
}

TEST_F(Installation, UndoneLeavesNothingBelowTheKeysOfTheClasses) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  SetForeignValue(L"CLSID\\{555D9E80-10EC-45A2-9712-D43E5E66F163}\\InprocServer32\\Cache");
}

TEST_F(Installation, UndoneKeepsKeysOfOthersBelowTheProgramId) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  SetForeignValue(L"solidworks_add_in.SwAddin\\shell");

  ASSERT_EQ(Msiexec(L"/x " + ThisPackage()), 0u);

  const std::wstring key = L"HKLM\\Software\\Classes\\solidworks_add_in.SwAddin\\";
  EXPECT_PRED_FORMAT2(SameEntries, ChangesSoFar(),
                      (Lines{L"+ " + key + L" = key", L"+ " + key + L"shell\\ = key",
                             L"+ " + key + L"shell\\\\Foreign = REG_SZ 1"}));
  EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Classes\\solidworks_add_in.SwAddin"),
            ERROR_SUCCESS);
}

TEST_F(Installation, RefusesAWindowsBefore10) {
  HKEY opened = nullptr;
  RegOpenKeyExW(HKEY_LOCAL_MACHINE, kWindows.c_str(), 0, KEY_SET_VALUE, &opened);
  const UniqueRegistryKey windows(opened);
  ASSERT_EQ(RegDeleteValueW(windows.get(), L"CurrentMajorVersionNumber"), ERROR_SUCCESS);
  MessageBoxRecorder boxes({IDOK});

  EXPECT_EQ(InstallHere(ThisPackage()), unsigned{ERROR_INSTALL_FAILURE});

  ASSERT_EQ(boxes.Boxes().size(), 1u);
  EXPECT_EQ(boxes.Boxes()[0].text, L"TAVO SolidWorks Integration needs Windows 10 or later.");
  EXPECT_TRUE(Products().empty());
  const DWORD ten = 10;
  RegSetValueExW(windows.get(), L"CurrentMajorVersionNumber", 0, REG_DWORD,
                 reinterpret_cast<const BYTE*>(&ten), sizeof ten);
}

}  // namespace
