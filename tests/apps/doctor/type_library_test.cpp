// The registration of the type library.
#include <windows.h>

#include <oleauto.h>

#include "doctor_fixture.h"
#include "solidworks_add_in_h.h"

using doctor::Status;

namespace {

class TypeLibraryCheck : public DoctorFixture {
 protected:
  static std::wstring FileKey() {
    return L"SOFTWARE\\Classes\\TypeLib\\" + doctor::GuidText(LIBID_SolidWorksAddInLib) + L"\\1.0\\0\\win64";
  }
};

TEST_F(TypeLibraryCheck, FindsNothingAfterARegistration) { ExpectHealthy(Check("type_library")); }

TEST_F(TypeLibraryCheck, FindsThatItIsNotRegistered) {
  ASSERT_EQ(UnRegisterTypeLib(LIBID_SolidWorksAddInLib, 1, 0, 0, SYS_WIN64), S_OK);
  ExpectFinding(Check("type_library"), "type_library.registered", Status::kFailed, L"is not registered.");
}

TEST_F(TypeLibraryCheck, FindsThatItIsRegisteredFromAnotherFile) {
  const std::wstring copy = m_folder.Write(L"other.dll", ReadFileBytes(AddInDll::BuiltPath()));
  const RegistryChange change(HKEY_LOCAL_MACHINE, FileKey(), L"", copy);
  const auto report = Check("type_library");
  ExpectFinding(report, "type_library.path", Status::kFailed,
                L"The registered type library is " + copy + L", not ");
  ExpectFinding(report, "type_library.content", Status::kOk, L"can be loaded");
}

TEST_F(TypeLibraryCheck, FindsThatItsFileDoesNotExist) {
  const RegistryChange change(HKEY_LOCAL_MACHINE, FileKey(), L"", std::wstring(L"C:\\gone\\add_in.dll"));
  ExpectFinding(Check("type_library"), "type_library.content", Status::kFailed,
                L"The registered type library C:\\gone\\add_in.dll cannot be loaded");
}

TEST_F(TypeLibraryCheck, HasNothingToLookForWithoutALibrary) {
  RegisterLibrary(L"C:\\no such folder\\solidworks_add_in.dll");
  ExpectFinding(Check("type_library"), "type_library.registered", Status::kNotApplicable,
                L"There is no library");
}

}  // namespace
