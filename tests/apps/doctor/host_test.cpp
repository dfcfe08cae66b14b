// The CAD application's entries.
#include "case_name.h"
#include "doctor_fixture.h"

using doctor::Report;
using doctor::Status;

namespace {

class HostCheck : public DoctorFixture {
 protected:
  static std::wstring HostKey() { return L"SOFTWARE\\SolidWorks\\AddIns\\" + ClassId(); }
  static std::wstring StartUpKey() { return L"Software\\SolidWorks\\AddInsStartup\\" + ClassId(); }
};

TEST_F(HostCheck, FindsNothingAfterARegistration) { ExpectHealthy(Check("host")); }

TEST_F(HostCheck, FindsThatTheAddInIsNotListed) {
  Unregister();
  ExpectFinding(Check("host"), "host.key", Status::kFailed,
                L"list of add-ins does not have the add-in: HKLM\\" + HostKey() + L" is missing.");
}

TEST_F(HostCheck, FindsThatTheAddInIsListedFor32BitProgramsOnly) {
  Unregister();
  const PlantedKey key(HKEY_LOCAL_MACHINE, HostKey(), 0u, KEY_WOW64_32KEY);
  ExpectFinding(Check("host"), "host.key", Status::kFailed, L"exists for 32-bit programs only.");
}

TEST_F(HostCheck, FindsAnotherTitle) {
  const RegistryChange change(HKEY_LOCAL_MACHINE, HostKey(), L"Title", std::wstring(L"Something else"));
  ExpectFinding(Check("host"), "host.key", Status::kFailed,
                L"The value \"Title\" of HKLM\\" + HostKey() +
                    L" is \"Something else\"; it must be \"TAVO SolidWorks Integration\".");
}

TEST_F(HostCheck, FindsAMissingDescription) {
  const RegistryChange change(HKEY_LOCAL_MACHINE, HostKey(), L"Description", std::monostate());
  ExpectFinding(Check("host"), "host.key", Status::kFailed, L"The value \"Description\"");
}

TEST_F(HostCheck, SaysThatTheAddInDoesNotLoadByDefault) {
  const Report report = Check("host");
  ExpectFinding(report, "host.start_up", Status::kOk,
                L"it does not load the add-in: this is the machine's default");
  EXPECT_NE(report.Conclusion().find(L"it does not load the add-in"), std::wstring::npos);
}

TEST_F(HostCheck, SaysThatTheMachinesDefaultLoadsTheAddIn) {
  const RegistryChange change(HKEY_LOCAL_MACHINE, HostKey(), L"", 1u);
  const Report report = Check("host");
  ExpectHealthy(report);
  ExpectFinding(report, "host.start_up", Status::kOk, L"it loads the add-in: this is the machine's default");
}

TEST_F(HostCheck, SaysThatTheAccountLoadsTheAddIn) {
  const PlantedKey key(HKEY_CURRENT_USER, StartUpKey(), 1u);
  ExpectFinding(Check("host"), "host.start_up", Status::kOk,
                L"it loads the add-in: this is the choice of this account");
}

TEST_F(HostCheck, WarnsThatTheAccountHasSwitchedTheAddInOff) {
  const RegistryChange change(HKEY_LOCAL_MACHINE, HostKey(), L"", 1u);
  const PlantedKey key(HKEY_CURRENT_USER, StartUpKey(), 0u);
  ExpectFinding(Check("host"), "host.start_up", Status::kWarning,
                L"it does not load the add-in: this is the choice of this account");
}

TEST_F(HostCheck, DoesNotKnowTheReleaseOfAHostThatIsNotThere) {
  ExpectFinding(Check("host"), "host.release", Status::kNotApplicable, L"is not known");
}

TEST_F(HostCheck, NamesTheReleasesThatAreInstalled) {
  const PlantedKey first(HKEY_LOCAL_MACHINE, L"SOFTWARE\\SolidWorks\\SOLIDWORKS 2023", 0u);
  const PlantedKey second(HKEY_LOCAL_MACHINE, L"SOFTWARE\\SolidWorks\\SolidWorks 2018", 0u);
  const PlantedKey other(HKEY_LOCAL_MACHINE, L"SOFTWARE\\SolidWorks\\SolidWorks Tool", 0u);
  ExpectFinding(Check("host"), "host.release", Status::kOk, L"on this machine: 2018, 2023.");
}

TEST_F(HostCheck, FindsARestrictedOldRelease) {
  const PlantedKey key(HKEY_LOCAL_MACHINE, L"SOFTWARE\\SolidWorks\\SolidWorks 2017", 0u);
  ExpectFinding(Check("host"), "host.release", Status::kFailed,
                L"on this machine: 2017. That is too old: components cannot be replaced.");
}

TEST_F(HostCheck, WarnsOfAnOldReleaseBesideANewOne) {
  const PlantedKey first(HKEY_LOCAL_MACHINE, L"SOFTWARE\\SolidWorks\\SolidWorks 2016", 0u);
  const PlantedKey second(HKEY_LOCAL_MACHINE, L"SOFTWARE\\SolidWorks\\SolidWorks 2020", 0u);
  ExpectFinding(Check("host"), "host.release", Status::kWarning, L"on this machine: 2016, 2020.");
}

}  // namespace
