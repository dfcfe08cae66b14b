#include "installations.h"

#include <gtest/gtest.h>

#include "empty_machine.h"

namespace {

using Keys = std::vector<std::wstring>;

constexpr const wchar_t* kHost = L"SOFTWARE\\SolidWorks";
constexpr const wchar_t* kAddIns = L"SOFTWARE\\SolidWorks\\AddIns\\{555D9E80-10EC-45A2-9712-D43E5E66F163}";
constexpr const wchar_t* kClass = L"SOFTWARE\\Classes\\CLSID\\{555D9E80-10EC-45A2-9712-D43E5E66F163}";
constexpr const wchar_t* kHandler = L"SOFTWARE\\Classes\\CLSID\\{BBFA8676-A288-4967-90CD-ED68F7490D93}";
constexpr const wchar_t* kOther = L"SOFTWARE\\Classes\\CLSID\\{00000000-0000-0000-0000-000000000001}";

std::wstring Full(const std::wstring& path) { return L"HKEY_LOCAL_MACHINE\\" + path; }

class InstallationsTest : public testing::Test {
 protected:
  static void Make(const wchar_t* path) {
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                              nullptr, &key, nullptr),
              ERROR_SUCCESS);
    const UniqueRegistryKey owner(key);
  }

  static bool Exists(const wchar_t* path) {
    HKEY key = nullptr;
    const LSTATUS status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key);
    const UniqueRegistryKey owner(key);
    return status == ERROR_SUCCESS;
  }

 private:
  EmptyMachine m_machine;
};

}  // namespace

TEST_F(InstallationsTest, AreNoneOnAnEmptyMachine) {
  Make(kOther);
  EXPECT_EQ(FoundInstallations(), Keys{});
}

TEST_F(InstallationsTest, AreTheKeyOfTheHost) {
  Make(kHost);
  EXPECT_EQ(FoundInstallations(), Keys{Full(kHost)});
}

TEST_F(InstallationsTest, AreTheClassesOfTheAddIn) {
  Make(kClass);
  Make(kHandler);
  EXPECT_EQ(FoundInstallations(), (Keys{Full(kClass), Full(kHandler)}));
}

TEST_F(InstallationsTest, AreRemovedAndNothingElse) {
  Make(kAddIns);
  Make(kClass);
  Make(kOther);
  RemoveLeftovers();
  EXPECT_EQ(FoundInstallations(), Keys{});
  EXPECT_FALSE(Exists(kAddIns));
  EXPECT_TRUE(Exists(kOther));
}
