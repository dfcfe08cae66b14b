// The program itself, as its user starts it.
#include <array>

#include "CJsonObject.h"
#include "CStringHelper.h"
#include "base/unique_handle.h"
#include "doctor_fixture.h"
#include "folder_tree.h"
#include "image.h"
#include "module/registry.h"
#include "plm_client/client.h"

namespace {

struct Ended {
  DWORD exit_code;
  std::string output, errors;
};

class DoctorProgram : public DoctorFixture {
 protected:
  /// Runs the program until it ends. Its output goes into files.
  Ended Run(const std::wstring& arguments) const {
    Ended ended{};
    {
      const UniqueHandle output = MakeFile(L"output"), errors = MakeFile(L"errors");
      STARTUPINFOW startup{};
      startup.cb = sizeof startup;
      startup.dwFlags = STARTF_USESTDHANDLES;
      startup.hStdOutput = output.get();
      startup.hStdError = errors.get();
      PROCESS_INFORMATION process{};
      std::wstring command_line = L"\"" + m_program + L"\" " + arguments;
      EXPECT_TRUE(CreateProcessW(m_program.c_str(), command_line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                 nullptr, &startup, &process));
      const UniqueHandle thread = OwnHandle(process.hThread), running = OwnHandle(process.hProcess);
      EXPECT_EQ(WaitForSingleObject(running.get(), 60'000), WAIT_OBJECT_0);
      GetExitCodeProcess(running.get(), &ended.exit_code);
    }
    ended.output = m_files.Read(L"output");
    ended.errors = m_files.Read(L"errors");
    return ended;
  }

  TempFolder m_files;  // apart from what the program looks at

 private:
  UniqueHandle MakeFile(const wchar_t* name) const {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return OwnHandle(CreateFileW(m_files.Path(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                 CREATE_ALWAYS, 0, nullptr));
  }
};

TEST_F(DoctorProgram, EndsWithZeroIfNothingHasFailed) {
  const Ended ended = Run(L"");
  EXPECT_EQ(ended.exit_code, 0u) << ended.output;
  EXPECT_EQ(ended.errors, "");
  EXPECT_NE(ended.output.find("  OK       An object of the class"), std::string::npos) << ended.output;
  EXPECT_NE(
      ended.output.find(" 0 failed, 1 with a warning.\nWhen the CAD application starts, it does not load"),
      std::string::npos)
      << ended.output;
}

TEST_F(DoctorProgram, EndsWithOneIfSomethingHasFailed) {
  Unregister();
  const Ended ended = Run(L"--area registration --area host");
  EXPECT_EQ(ended.exit_code, 1u);
  EXPECT_NE(ended.output.find("  FAILED   The add-in's class is not registered.\n           -> Run as"),
            std::string::npos)
      << ended.output;
  EXPECT_EQ(ended.output.find("activation"), std::string::npos);
}

TEST_F(DoctorProgram, PrintsOneJsonObject) {
  Configure(L"PlmClient.json", R"({"client":"客户.exe"})");
  const Ended ended = Run(L"--json --area client --area library");
  CJsonObject json;
  ASSERT_TRUE(json.CreateFrom(CStringHelper::UTF8ToUnicode(ended.output))) << ended.output;
  EXPECT_EQ(json.GetStringValue(L"program"), L"tavo_doctor");
  EXPECT_EQ(json.GetStringValue(L"version"), CStringHelper::UTF8ToUnicode(PRODUCT_VERSION));
  EXPECT_EQ(json.GetLongValue(L"failures"), 1);
  EXPECT_EQ(json.GetLongValue(L"warnings"), 0);
  const auto checks = json.GetObjectArray(L"checks");
  EXPECT_EQ(checks.front()->GetStringValue(L"id"), L"library.file");
  EXPECT_EQ(checks.front()->GetStringValue(L"area"), L"library");
  EXPECT_EQ(checks.front()->GetStringValue(L"status"), L"ok");
  EXPECT_EQ(checks.front()->GetStringValue(L"advice"), L"");
  EXPECT_EQ(checks[4]->GetStringValue(L"id"), L"client.program");
  EXPECT_EQ(checks[4]->GetStringValue(L"text"), L"The PLM client's program 客户.exe is not a full path.");
  EXPECT_NE(checks[4]->GetStringValue(L"advice"), L"");
}

TEST_F(DoctorProgram, AsksTheClientForASignOfLife) {
  const std::wstring pipe = L"tavo-doctor-test-" + std::to_wstring(GetCurrentProcessId());
  Configure(L"PlmClient.json", "{\"pipe\":\"" + CStringHelper::UnicodeToUTF8(pipe) + "\"}");
  const plm_client::Client client({.pipe = pipe}, [](const plm_client::Request&, std::stop_token) {
    return plm_client::Reply::Text("");
  });
  const Ended ended = Run(L"--area client");
  EXPECT_EQ(ended.exit_code, 0u);
  EXPECT_NE(ended.output.find("The PLM client answered in "), std::string::npos) << ended.output;
}

TEST_F(DoctorProgram, RefusesAnOptionThatItDoesNotKnow) {
  const Ended ended = Run(L"--jsn");
  EXPECT_EQ(ended.exit_code, 2u);
  EXPECT_EQ(ended.output, "");
  EXPECT_EQ(ended.errors, "tavo_doctor: there is no option \"--jsn\"; see tavo_doctor --help\n");
}

TEST_F(DoctorProgram, RefusesValuesThatItCannotUse) {
  EXPECT_EQ(Run(L"--area everything").errors,
            "tavo_doctor: there is no area \"everything\"; see tavo_doctor --help\n");
  EXPECT_EQ(Run(L"--timeout 0").errors,
            "tavo_doctor: \"0\" is not a number of seconds from 1 to 600; see tavo_doctor --help\n");
  EXPECT_EQ(Run(L"--bundle").errors,
            "tavo_doctor: the option --bundle needs a value; see tavo_doctor --help\n");
}

TEST_F(DoctorProgram, SaysHowItIsUsed) {
  const Ended ended = Run(L"--help");
  EXPECT_EQ(ended.exit_code, 0u);
  for (const char* option : {"--json", "--bundle", "--area", "--timeout", "--help"}) {
    EXPECT_NE(ended.output.find(option), std::string::npos) << option;
  }
}

TEST_F(DoctorProgram, WritesTheBundleBesidePrinting) {
  const std::wstring path = m_files.Path(L"支持.zip");
  const Ended ended = Run(L"--area log --bundle \"" + path + L"\"");
  EXPECT_EQ(ended.exit_code, 0u) << ended.errors;
  EXPECT_NE(ended.output.find("log folder"), std::string::npos);
  EXPECT_TRUE(ReadFileBytes(path).starts_with("PK"));
  const Ended again = Run(L"--area log --bundle \"" + path + L"\"");
  EXPECT_EQ(again.exit_code, 2u);
  EXPECT_NE(again.errors.find("支持.zip exists already\n"), std::string::npos) << again.errors;
}

TEST_F(DoctorProgram, ChangesNothing) {
  Configure(L"PlmClient.json", R"({"startTimeoutMs":5})");
  const auto files = ListTree(m_folder);
  const auto machine = ReadRegistry(HKEY_LOCAL_MACHINE, L"SOFTWARE\\SolidWorks");
  const auto classes = ReadRegistry(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Classes");
  const auto user = ReadRegistry(HKEY_CURRENT_USER, L"Software");

  Run(L"--bundle \"" + m_files.Path(L"a.zip") + L"\"");

  EXPECT_EQ(ListTree(m_folder), files);
  EXPECT_TRUE(ReadRegistry(HKEY_LOCAL_MACHINE, L"SOFTWARE\\SolidWorks") == machine);
  EXPECT_TRUE(ReadRegistry(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Classes") == classes);
  EXPECT_TRUE(ReadRegistry(HKEY_CURRENT_USER, L"Software") == user);
}

TEST_F(DoctorProgram, NeedsNothingButTheSystemAndHasTheVersion) {
  const auto image = doctor::ParseImage(ReadFileBytes(m_program));
  ASSERT_TRUE(image);
  EXPECT_EQ(image->machine, IMAGE_FILE_MACHINE_AMD64);
  for (const doctor::ImportedLibrary& import : image->imports) {
    const std::wstring path = L"C:\\windows\\system32\\" + CStringHelper::UTF8ToUnicode(import.name);
    EXPECT_NE(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES) << import.name;
  }
  const auto version = doctor::ReadFileVersion(m_program);
  ASSERT_TRUE(version);
  EXPECT_EQ(CStringHelper::UnicodeToUTF8(doctor::TextOf(*version)), PRODUCT_VERSION);
}

}  // namespace
