// A version in place of another.
#include <windows.h>

#include <gtest/gtest.h>

#include "computer.h"
#include "list_difference.h"
#include "message_boxes.h"

namespace {

using namespace computer;
using Lines = std::vector<std::wstring>;

const std::wstring kView = kInstallFolder + L"\\config\\View.json";

class Upgrade : public InstallerTest {
 protected:
  void SetUp() override { ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u); }
};

TEST_F(Upgrade, ReplacesTheDllAndTheEntryInTheListOfPrograms) {
  ASSERT_EQ(FileVersion(kDll), PRODUCT_VERSION L".0");
  ASSERT_EQ(Msiexec(L"/i " + NextPackage()), 0u);
  EXPECT_EQ(FileVersion(kDll), NEXT_VERSION L".0");
  const std::vector<Product> products = Products();
  ASSERT_EQ(products.size(), 1u);
  EXPECT_EQ(products[0].version, NEXT_VERSION);
}

TEST_F(Upgrade, ChangesNothingInTheRegistryOfTheAddIn) {
  const Lines before = ChangesBelow(ChangesSoFar(), {L"HK"});
  ASSERT_EQ(Msiexec(L"/i " + NextPackage()), 0u);
  EXPECT_PRED_FORMAT2(SameEntries, ChangesBelow(ChangesSoFar(), {L"HK"}), before);
}

TEST_F(Upgrade, ReplacesAnInstalledFileThatWasChanged) {
  const std::string installed = ReadFileBytes(kView);
  WriteFileBytes(kView, "{}");
  ASSERT_EQ(Msiexec(L"/i " + NextPackage()), 0u);
  EXPECT_EQ(ReadFileBytes(kView), installed);
}

TEST_F(Upgrade, InstallsNothingAgainForTheSameVersion) {
  const Lines before = ChangesSoFar();
  EXPECT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  EXPECT_PRED_FORMAT2(SameEntries, ChangesSoFar(), before);
  EXPECT_EQ(Products().size(), 1u);
}

TEST_F(Upgrade, IsNoWayBackToAnEarlierVersion) {
  ASSERT_EQ(Msiexec(L"/i " + NextPackage()), 0u);
  const Lines before = ChangesSoFar();
  MessageBoxRecorder boxes({IDOK});

  EXPECT_EQ(Msiexec(L"/i " + ThisPackage()), DWORD{ERROR_INSTALL_FAILURE});
  EXPECT_EQ(InstallHere(ThisPackage()), unsigned{ERROR_INSTALL_FAILURE});

  ASSERT_EQ(boxes.Boxes().size(), 1u);
  EXPECT_EQ(
      boxes.Boxes()[0].text,
      L"A later version of TAVO SolidWorks Integration is installed on this computer. Remove it first if you "
      L"want version " PRODUCT_VERSION L" in its place.");
  EXPECT_PRED_FORMAT2(SameEntries, ChangesSoFar(), before);
}

/// The DLL as a host has it open.
class LoadedDll {
 public:
  LoadedDll() : m_module(LoadLibraryW(kDll.c_str())) { EXPECT_TRUE(m_module); }
  LoadedDll(const LoadedDll&) = delete;
  LoadedDll& operator=(const LoadedDll&) = delete;
  ~LoadedDll() { FreeLibrary(m_module); }

 private:
  HMODULE m_module;
};

TEST_F(Upgrade, OfALoadedDllTakesEffectWithARestart) {
  {
    const LoadedDll dll;
    EXPECT_EQ(Msiexec(L"/i " + NextPackage()), DWORD{ERROR_SUCCESS_REBOOT_REQUIRED});
    EXPECT_EQ(FileVersion(kDll), PRODUCT_VERSION L".0");
    EXPECT_EQ(Products().at(0).version, NEXT_VERSION);
  }
  ASSERT_EQ(RunAndWait(L"wineboot"), 0u);
  EXPECT_EQ(FileVersion(kDll), NEXT_VERSION L".0");
}

}  // namespace
