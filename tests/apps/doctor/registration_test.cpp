// The entries of the classes.
#include "doctor_fixture.h"

using doctor::Report;
using doctor::Status;

namespace {

using RegistrationCheck = DoctorFixture;

TEST_F(RegistrationCheck, FindsNothingAfterARegistration) { ExpectHealthy(Check("registration")); }

TEST_F(RegistrationCheck, FindsThatNothingIsRegistered) {
  Unregister();
  const Report report = Check("registration");
  ExpectFinding(report, "registration.add_in", Status::kFailed, L"The add-in's class is not registered.");
  ExpectFinding(report, "registration.bitmap_handler", Status::kFailed,
                L"The bitmap handler's class is not registered.");
}

TEST_F(RegistrationCheck, FindsAnEntryFor32BitProgramsOnly) {
  Unregister();
  const PlantedKey key(HKEY_LOCAL_MACHINE, ClassKey() + L"\\InprocServer32", L"C:\\add_in.dll",
                       KEY_WOW64_32KEY);
  ExpectFinding(Check("registration"), "registration.add_in", Status::kFailed,
                L"is registered for 32-bit programs only.");
}

TEST_F(RegistrationCheck, FindsAnEntryForOneAccountOnly) {
  Unregister();
  const PlantedKey key(HKEY_CURRENT_USER, ClassKey() + L"\\InprocServer32", L"C:\\add_in.dll");
  ExpectFinding(Check("registration"), "registration.add_in", Status::kFailed,
                L"is registered for the current account only");
}

TEST_F(RegistrationCheck, FindsACopyOfAnAccountThatHidesTheMachinesEntry) {
  const PlantedKey key(HKEY_CURRENT_USER, ClassKey() + L"\\InprocServer32", L"C:\\old\\add_in.dll");
  const Report report = Check("registration");
  ExpectFinding(report, "registration.add_in", Status::kOk, L"is registered for the machine");
  ExpectFinding(report, "registration.add_in_per_user", Status::kFailed,
                L"takes the place of the machine's entry: C:\\old\\add_in.dll is loaded.");
}

TEST_F(RegistrationCheck, FindsAnEntryWithAnotherValue) {
  const RegistryChange change(HKEY_LOCAL_MACHINE, ClassKey() + L"\\InprocServer32", L"ThreadingModel",
                              std::wstring(L"Apartment"));
  ExpectFinding(Check("registration"), "registration.add_in", Status::kFailed,
                L"the value \"ThreadingModel\" of HKLM\\" + ClassKey() +
                    L"\\InprocServer32 is \"Apartment\"; it must be \"Both\".");
}

TEST_F(RegistrationCheck, FindsAMissingValue) {
  const RegistryChange change(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Classes\\solidworks_add_in.SwAddin\\CLSID", L"",
                              std::monostate());
  ExpectFinding(Check("registration"), "registration.add_in", Status::kFailed,
                L"the default value of HKLM\\SOFTWARE\\Classes\\solidworks_add_in.SwAddin\\CLSID is missing");
}

TEST_F(RegistrationCheck, FindsAMissingKey) {
  // The fixture has made this key, and unregistering does not need it.
  RegDeleteKeyExW(HKEY_LOCAL_MACHINE, (ClassKey() + L"\\TypeLib").c_str(), KEY_WOW64_64KEY, 0);
  ExpectFinding(Check("registration"), "registration.add_in", Status::kFailed,
                L"the key HKLM\\" + ClassKey() + L"\\TypeLib is missing");
}

TEST_F(RegistrationCheck, FindsClassesOfTwoLibraries) {
  RegisterCopy();
  ExpectFinding(Check("registration"), "registration.bitmap_handler", Status::kFailed,
                L"it must be \"" + m_folder.Path(L"installed\\solidworks_add_in.dll") + L"\"");
}

TEST_F(RegistrationCheck, FindsALibraryWithoutRegistrationScripts) {
  RegisterLibrary(L"C:\\windows\\system32\\version.dll");
  ExpectFinding(Check("registration"), "registration.add_in", Status::kFailed,
                L"C:\\windows\\system32\\version.dll cannot be read, or is not the add-in's library.");
}

}  // namespace
