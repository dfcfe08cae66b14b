// The console program, run as a process.
#include <windows.h>

#include "CStringHelper.h"
#include "base/unique_handle.h"
#include "host_fixture.h"
#include "program_folder.h"

namespace {

struct Finished {
  DWORD exit_code = 99;
  std::string output;
  std::string errors;
};

class ProgramTest : public testing::Test {
 protected:
  UniqueHandle OpenOutput(const wchar_t* name) const {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return OwnHandle(CreateFileW(m_folder.Path(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                 CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  }

  Finished Start(const std::wstring& arguments) {
    const UniqueHandle output = OpenOutput(L"output.txt");
    const UniqueHandle errors = OpenOutput(L"errors.txt");
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = output.get();
    start.hStdError = errors.get();
    PROCESS_INFORMATION process{};
    std::wstring command = L"\"" + InBin(L"cad_host.exe") + L"\" " + arguments;
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                               m_folder.Path().c_str(), &start, &process));
    const UniqueHandle process_owner = OwnHandle(process.hProcess);
    const UniqueHandle thread_owner = OwnHandle(process.hThread);
    WaitForSingleObject(process.hProcess, INFINITE);
    Finished finished;
    GetExitCodeProcess(process.hProcess, &finished.exit_code);
    finished.output = m_folder.Read(L"output.txt");
    finished.errors = m_folder.Read(L"errors.txt");
    return finished;
  }

  Finished RunScript(std::wstring_view script, const std::wstring& options = {}) {
    m_folder.WriteText(L"script.txt", script);
    return Start(options + L" script.txt");
  }

  TempFolder m_folder;
};

TEST_F(ProgramTest, RunsAScript) {
  const Finished finished =
      RunScript(L"\ufeff# 注释\n\nnew part\r\nproperty 名 = 螺栓\nprint 完\n", L"--full");
  EXPECT_EQ(finished.exit_code, 0u);
  EXPECT_EQ(finished.errors, "");
  EXPECT_NE(finished.output.find("> new part\n    event FileNewNotify2"), std::string::npos)
      << finished.output;
  EXPECT_NE(finished.output.find("> property 名 = 螺栓"), std::string::npos);
}

TEST_F(ProgramTest, PrintsTheStoryUnlessTheFullOutputIsChosen) {
  const wchar_t* const script = L"new part\nexpect active Part1\nclose Part1\n";

  EXPECT_EQ(RunScript(script).output,
            "> new part\n> close Part1\n(4 of 4 calls and events are not shown; --full shows all)\n");
  EXPECT_EQ(RunScript(script, L"--full").output,
            "> new part\n"
            "    event FileNewNotify2(part \"Part1\", 1, \"\")\n"
            "    event ActiveDocChangeNotify()\n"
            "    event ActiveModelDocChangeNotify()\n"
            "> expect active Part1\n"
            "> close Part1\n"
            "    event FileCloseNotify(\"Part1\", 0)\n");
}

TEST_F(ProgramTest, WritesTheWholeJournalToAFileAlsoIfTheOutputIsShort) {
  const Finished finished = RunScript(L"new part\n", L"--journal journal.txt");
  EXPECT_EQ(finished.output.find("event"), finished.output.find("events are not shown"));
  EXPECT_NE(m_folder.ReadText(L"journal.txt").find(L"event FileNewNotify2"), std::wstring::npos);
}

TEST_F(ProgramTest, EndsWithOneWhenAnExpectationFails) {
  const Finished finished = RunScript(L"expect active bolt.sldprt\nprint went on\n");
  EXPECT_EQ(finished.exit_code, 1u);
  EXPECT_NE(finished.output.find("FAILED: script.txt:1: expect active bolt.sldprt: no document is open"),
            std::string::npos);
  EXPECT_NE(finished.output.find("went on"), std::string::npos);
}

TEST_F(ProgramTest, EndsWithTwoAndNamesTheLineThatFails) {
  const Finished finished = RunScript(L"new part\nfrobnicate\n");
  EXPECT_EQ(finished.exit_code, 2u);
  EXPECT_NE(finished.errors.find("cad_host: script.txt:2: unknown command \"frobnicate\""),
            std::string::npos);
}

TEST_F(ProgramTest, EndsWithTwoAndNamesTheLineOfANumberThatIsTooLarge) {
  const Finished finished = RunScript(L"new part\nfault fail the 99999999999 OpenDoc6 with 80004005\n");
  EXPECT_EQ(finished.exit_code, 2u);
  EXPECT_NE(finished.errors.find("cad_host: script.txt:2: \"99999999999\" is not the number of a call"),
            std::string::npos)
      << finished.errors;
}

TEST_F(ProgramTest, ReportsAScriptThatCannotBeRead) {
  const Finished finished = Start(L"none.txt");
  EXPECT_EQ(finished.exit_code, 2u);
  EXPECT_NE(finished.errors.find("cannot read the script none.txt"), std::string::npos);
}

TEST_F(ProgramTest, PrintsItsUsageIfTheArgumentsAreNotValid) {
  for (const wchar_t* const arguments : {L"", L"--state", L"--unknown x script.txt", L"a.txt b.txt"}) {
    const Finished finished = Start(arguments);
    EXPECT_EQ(finished.exit_code, 2u);
    EXPECT_TRUE(finished.errors.starts_with("usage: cad_host ")) << finished.errors;
  }
}

TEST_F(ProgramTest, SwitchesQuirksOffFromTheStart) {
  const Finished finished = RunScript(L"quirks\n", L"--without held-files --without equal-tab-names");
  EXPECT_EQ(finished.exit_code, 0u) << finished.errors;
  EXPECT_NE(finished.output.find("equal-tab-names off"), std::string::npos) << finished.output;
  EXPECT_NE(finished.output.find("held-files off"), std::string::npos);
  EXPECT_NE(finished.output.find("caller-arrays on"), std::string::npos);
}

TEST_F(ProgramTest, RefusesAnUnknownQuirkWithTheKnownOnes) {
  const Finished finished = RunScript(L"quirks\n", L"--without tabs");
  EXPECT_EQ(finished.exit_code, 2u);
  EXPECT_NE(finished.errors.find("cad_host: no quirk \"tabs\"; there are caller-arrays, "), std::string::npos)
      << finished.errors;
}

TEST_F(ProgramTest, ListsTheQuirksInItsUsage) {
  const Finished finished = Start(L"--help");
  for (const auto& quirk : cad_host::Quirks::All()) {
    for (const wchar_t* const text : {quirk.name, quirk.description}) {
      EXPECT_NE(finished.errors.find(CStringHelper::UnicodeToUTF8(text)), std::string::npos);
    }
  }
}

TEST_F(ProgramTest, WritesTheJournalToAFile) {
  RunScript(L"new part\nclose Part1\n", L"--journal journal.txt");
  EXPECT_EQ(m_folder.ReadText(L"journal.txt"),
            L"event FileNewNotify2(part \"Part1\", 1, \"\")\nevent ActiveDocChangeNotify()\n"
            L"event ActiveModelDocChangeNotify()\nevent FileCloseNotify(\"Part1\", 0)\n");
}

}  // namespace
