// Whether the host loads the add-in when it starts, for users who have not chosen themselves.
#include <gtest/gtest.h>

#include "computer.h"
#include "message_boxes.h"

namespace {

using namespace computer;

class LoadAtStartup : public InstallerTest {
 protected:
  static std::wstring Flag() { return MachineValue(kHostsKey); }
};

TEST_F(LoadAtStartup, IsOffUnlessAskedFor) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  EXPECT_EQ(Flag(), L"0");
}

TEST_F(LoadAtStartup, IsOnIfAskedFor) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage() + L" LOADATSTARTUP=1"), 0u);
  EXPECT_EQ(Flag(), L"1");
}

TEST_F(LoadAtStartup, StaysOnInARepair) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage() + L" LOADATSTARTUP=1"), 0u);
  ASSERT_EQ(Repair(), 0u);
  EXPECT_EQ(Flag(), L"1");
}

TEST_F(LoadAtStartup, CanBeSwitchedByARepair) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  ASSERT_EQ(Repair(L"LOADATSTARTUP=1"), 0u);
  EXPECT_EQ(Flag(), L"1");
  ASSERT_EQ(Repair(L"LOADATSTARTUP=0"), 0u);
  EXPECT_EQ(Flag(), L"0");
}

TEST_F(LoadAtStartup, StaysOnInAnUpgrade) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage() + L" LOADATSTARTUP=1"), 0u);
  ASSERT_EQ(Msiexec(L"/i " + NextPackage()), 0u);
  EXPECT_EQ(Flag(), L"1");
}

TEST_F(LoadAtStartup, StaysOffInAnUpgrade) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  ASSERT_EQ(Msiexec(L"/i " + NextPackage()), 0u);
  EXPECT_EQ(Flag(), L"0");
}

TEST_F(LoadAtStartup, CanBeSwitchedOffByAnUpgrade) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage() + L" LOADATSTARTUP=1"), 0u);
  ASSERT_EQ(Msiexec(L"/i " + NextPackage() + L" LOADATSTARTUP=0"), 0u);
  EXPECT_EQ(Flag(), L"0");
}

TEST_F(LoadAtStartup, IsNotGuessedFromAnotherValue) {
  MessageBoxRecorder boxes({IDOK});
  EXPECT_EQ(InstallHere(ThisPackage(), L"LOADATSTARTUP=yes"), unsigned{ERROR_INSTALL_FAILURE});
  ASSERT_EQ(boxes.Boxes().size(), 1u);
  EXPECT_EQ(boxes.Boxes()[0].text,
            L"LOADATSTARTUP is 1 (every user's CAD application loads the add-in when it starts) or 0, not "
            L"\"yes\".");
}

}  // namespace
