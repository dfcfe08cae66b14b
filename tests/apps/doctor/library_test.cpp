// The DLL as a file.
#include <array>

#include "doctor_fixture.h"
#include "image.h"

using doctor::Report;
using doctor::Status;

namespace {

using LibraryCheck = DoctorFixture;

/// The beginning of the fixed part of a VERSIONINFO with this version.
std::string FixedVersion(WORD major, WORD minor, WORD patch) {
  const std::array<WORD, 8> words = {0x04BD, 0xFEEF, 0, 1, minor, major, 0, patch};
  return {reinterpret_cast<const char*>(words.data()), sizeof words};
}

std::string OwnFixedVersion() {
  const std::optional<doctor::FileVersion> version = doctor::ReadFileVersion(AddInDll::BuiltPath());
  return FixedVersion(version->major, version->minor, version->patch);
}

TEST_F(LibraryCheck, FindsNothingWrongInTheBuiltLibrary) { ExpectHealthy(Check("library")); }

TEST_F(LibraryCheck, LooksAtTheLibraryBesideTheProgramIfNoneIsRegistered) {
  Unregister();
  const Report report = Check("library");
  ExpectHealthy(report);
  ExpectFinding(report, "library.file", Status::kOk,
                L"No library is registered. The one beside this program is");
}

TEST_F(LibraryCheck, FindsThatThereIsNoLibraryAtAll) {
  Unregister();
  m_program = m_folder.Path(L"tavo_doctor.exe");
  ExpectFinding(Check("library"), "library.file", Status::kFailed,
                L"No library is registered, and none lies beside this program.");
}

TEST_F(LibraryCheck, FindsThatTheRegisteredFileDoesNotExist) {
  RegisterLibrary(L"C:\\no such folder\\solidworks_add_in.dll");
  ExpectFinding(Check("library"), "library.file", Status::kFailed,
                L"The registered library C:\\no such folder\\solidworks_add_in.dll does not exist.");
}

TEST_F(LibraryCheck, WarnsThatAnotherLibraryThanTheOneBesideTheProgramIsRegistered) {
  RegisterCopy(OwnFixedVersion(), OwnFixedVersion());
  ExpectFinding(Check("library"), "library.file", Status::kWarning,
                L", not the one beside this program, which is not used.");
}

TEST_F(LibraryCheck, FindsAFileThatIsNoLibrary) {
  RegisterLibrary(m_folder.Write(L"solidworks_add_in.dll", "MZ, but nothing else"));
  ExpectFinding(Check("library"), "library.architecture", Status::kFailed,
                L"is damaged: it is not a library.");
}

TEST_F(LibraryCheck, FindsALibraryFor32Bits) {
  RegisterCopy(std::string("PE\0\0\x64\x86", 6), std::string("PE\0\0\x4C\x01", 6));
  ExpectFinding(Check("library"), "library.architecture", Status::kFailed, L"The library is a 32-bit one.");
}

TEST_F(LibraryCheck, FindsALibraryForAnotherProcessor) {
  RegisterCopy(std::string("PE\0\0\x64\x86", 6), std::string("PE\0\0\x64\xAA", 6));
  ExpectFinding(Check("library"), "library.architecture", Status::kFailed,
                L"The library is made for another processor (machine 43620).");
}

TEST_F(LibraryCheck, FindsAnOldVersion) {
  RegisterCopy(OwnFixedVersion(), FixedVersion(0, 9, 7));
  ExpectFinding(Check("library"), "library.version", Status::kFailed,
                L"The library has the old version 0.9.7; this program has version ");
}

TEST_F(LibraryCheck, WarnsOfANewerVersion) {
  RegisterCopy(OwnFixedVersion(), FixedVersion(99, 0, 0));
  ExpectFinding(Check("library"), "library.version", Status::kWarning,
                L"The library has the newer version 99.0.0");
}

TEST_F(LibraryCheck, FindsAMissingLibraryThatItNeeds) {
  RegisterCopy("SHLWAPI.dll", "SHLWAPX.dll");
  ExpectFinding(Check("library"), "library.imports", Status::kFailed,
                L"The library needs SHLWAPX.dll, which this system does not have.");
}

TEST_F(LibraryCheck, FindsAMissingFunctionThatItNeeds) {
  RegisterCopy("PathFileExistsW", "PathFileExistsX");
  ExpectFinding(Check("library"), "library.imports", Status::kFailed,
                L"The library needs PathFileExistsX of SHLWAPI.dll, which this system does not have.");
}

TEST_F(LibraryCheck, StandsALibraryThatIsCutOffAnywhere) {
  const std::string whole = ReadFileBytes(AddInDll::BuiltPath());
  for (std::size_t size = 0; size < 4096; size += 61) {
    EXPECT_FALSE(doctor::ParseImage(whole.substr(0, size))) << size;
  }
}

}  // namespace
