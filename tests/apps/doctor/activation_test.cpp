// Creating objects through COM.
#include "doctor_fixture.h"
#include "program_folder.h"

using doctor::Report;
using doctor::Status;

namespace {

class ActivationCheck : public DoctorFixture {
 protected:
  /// Registers a library whose only function does what its name says: faulty_server.cpp.
  void RegisterFaulty(const std::wstring& name) {
    RegisterLibrary(m_folder.Write(name + L".dll", ReadFileBytes(BesideTests(L"faulty_server.dll"))));
  }
};

TEST_F(ActivationCheck, CreatesObjectsOfBothClasses) {
  const Report report = Check("activation");
  ExpectHealthy(report);
  EXPECT_EQ(report.Count(Status::kOk), 2u);
}

TEST_F(ActivationCheck, FindsAClassThatIsNotRegistered) {
  Unregister();
  const Report report = Check("activation");
  ExpectFinding(report, "activation.add_in", Status::kFailed, L"(0x80040154)");
  ExpectFinding(report, "activation.bitmap_handler", Status::kFailed, L"(0x80040154)");
}

TEST_F(ActivationCheck, FindsALibraryThatRefuses) {
  RegisterFaulty(L"refuse");
  ExpectFinding(Check("activation"), "activation.add_in", Status::kFailed, L"(0x8007000e)");
}

TEST_F(ActivationCheck, FindsALibraryThatCrashes) {
  RegisterFaulty(L"crash");
  const Report report = Check("activation");
  ExpectFinding(report, "activation.add_in", Status::kFailed, L"the library crashed (exit code 0xc0000005)");
  ExpectFinding(report, "activation.bitmap_handler", Status::kOk, L"can be created");
}

TEST_F(ActivationCheck, FindsALibraryThatEndsTheProcess) {
  RegisterFaulty(L"exit");
  ExpectFinding(Check("activation"), "activation.add_in", Status::kFailed, L"the library crashed (exit code");
}

TEST_F(ActivationCheck, FindsALibraryThatHangs) {
  RegisterFaulty(L"hang");
  m_patience = std::chrono::seconds(3);
  ExpectFinding(Check("activation"), "activation.add_in", Status::kFailed,
                L"was not created within 3000 ms: the library hangs.");
}

TEST_F(ActivationCheck, TellsThatTheProgramCannotStartItself) {
  m_program = m_folder.Path(L"tavo_doctor.exe");
  ExpectFinding(Check("activation"), "activation.add_in", Status::kFailed,
                L"This program could not start itself");
}

}  // namespace
