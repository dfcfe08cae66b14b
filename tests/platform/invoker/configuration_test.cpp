#include "configured_client.h"

#include "CStringHelper.h"
#include "case_name.h"
#include "invoker_fixture.h"
#include "pipe_owner.h"
#include "plm_client/json_text.h"
#include "program_folder.h"

using std::chrono::milliseconds;

namespace {

class Configuration : public InvokerFixture {
 protected:
  static ClientConfiguration Read() { return invoker::ReadClientConfiguration(L"Test", L"PlmClient.json"); }
  static std::wstring DefaultPipe() { return L"tavo-plm-client-" + invoker::UserSidText(); }
};

TEST_F(Configuration, ThatIsMissingHasTheDefaults) {
  const auto configuration = Read();
  EXPECT_EQ(configuration.pipe, DefaultPipe());
  EXPECT_TRUE(configuration.pipe.starts_with(L"tavo-plm-client-S-1-5-21-"));
  EXPECT_EQ(configuration.program, L"");
  EXPECT_EQ(configuration.start_timeout, milliseconds(15'000));
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Configuration, IsReadWithAByteOrderMark) {
  Configure(
      "\xEF\xBB\xBF"
      "{\"pipe\":\"\xE6\xB5\x8B #1 "
      "'x'\",\"client\":\"C:\\\\PLM\\\\client.exe\",\"startTimeoutMs\":7}");
  const auto configuration = Read();
  EXPECT_EQ(configuration.pipe, L"\u6D4B #1 'x'");
  EXPECT_EQ(configuration.program, L"C:\\PLM\\client.exe");
  EXPECT_EQ(configuration.start_timeout, milliseconds(7));
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Configuration, ReplacesEnvironmentVariablesInTheProgram) {
  const ScopedEnvironment folder(L"TAVO_TEST_PLM", L"C:\\\u6D4B PLM");
  Configure(R"({"client":"%TAVO_TEST_PLM%\\bin\\%TAVO_TEST_MISSING%\\client.exe"})");
  EXPECT_EQ(Read().program, L"C:\\\u6D4B PLM\\bin\\%TAVO_TEST_MISSING%\\client.exe");
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Configuration, WithUnknownMembersIsReadAndLoggedInTheLineOfTheOtherFaults) {
  Configure(R"({"other":[1],"pipe":"a","Client":"C:\\client.exe","startTimeoutMs":"1"})");
  const auto configuration = Read();
  EXPECT_EQ(configuration.pipe, L"a");
  EXPECT_EQ(configuration.program, L"");
  const std::vector<std::wstring> lines = PlatformLines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines[0].ends_with(
      L"PlmClient.json: \"startTimeoutMs\" is not a whole number of milliseconds; \"other\" is "
      L"not known; \"Client\" is not known;"))
      << testing::PrintToString(lines[0]);
}

TEST_F(Configuration, MayNameItsSchemaForEditors) {
  Configure(R"({"$schema":"schemas/PlmClient.schema.json","pipe":"a"})");
  EXPECT_EQ(Read().pipe, L"a");
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Configuration, WithoutAMemberHasItsDefault) {
  Configure(R"({"startTimeoutMs":0})");
  EXPECT_EQ(Read().pipe, DefaultPipe());
  EXPECT_EQ(Read().start_timeout, milliseconds(0));
  Configure(R"({"pipe":""})");
  EXPECT_EQ(Read().pipe, DefaultPipe());
  EXPECT_TRUE(PlatformLines().empty());
}

struct Fault {
  const char* name;
  const char* file;
  std::vector<std::wstring> named;  // in the log line
  std::wstring pipe{};              // the default if empty
};

void PrintTo(const Fault& fault, std::ostream* stream) { *stream << fault.name; }

class ConfigurationFaults : public Configuration, public testing::WithParamInterface<Fault> {};

TEST_P(ConfigurationFaults, LeadToTheDefaultAndOneLogLine) {
  Configure(GetParam().file);
  const auto configuration = Read();
  EXPECT_EQ(configuration.pipe, GetParam().pipe.empty() ? DefaultPipe() : GetParam().pipe);
  EXPECT_EQ(configuration.program, L"");
  EXPECT_EQ(configuration.start_timeout, milliseconds(15'000));

  const std::vector<std::wstring> lines = PlatformLines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_NE(lines[0].find(L"PlmClient.json"), std::wstring::npos);
  EXPECT_EQ(lines[0].find(L"PlmClient.json"), lines[0].rfind(L"PlmClient.json")) << "the path, once";
  for (const std::wstring& name : GetParam().named) {
    EXPECT_NE(lines[0].find(name), std::wstring::npos) << testing::PrintToString(lines[0]);
  }
}

const Fault kFaults[] = {
    {"Empty", "", {L"line 1, column 1"}},
    {"Malformed", "{\"pipe\":\n\"a\",", {L"line 2, column 5"}},
    {"NoObject", "[]", {L"the root is not an object"}},
    {"WrongTypes",
     R"({"pipe":5,"client":null,"startTimeoutMs":"1"})",
     {L"\"pipe\"", L"\"client\"", L"\"startTimeoutMs\""}},
    {"SchemaNotAText", R"({"$schema":{}})", {L"\"$schema\" is not a string"}},
    {"OneWrongType", R"({"pipe":"a","client":{}})", {L"\"client\""}, L"a"},
    {"NegativeTime", R"({"startTimeoutMs":-1})", {L"\"startTimeoutMs\""}},
    {"FractionOfTime", R"({"startTimeoutMs":1.5})", {L"\"startTimeoutMs\""}},
    {"UnknownMember", R"({"pipes":"a"})", {L"\"pipes\" is not known"}},
    {"TimeBeyond32Bits", R"({"startTimeoutMs":4294967296})", {L"\"startTimeoutMs\""}},
};
INSTANTIATE_TEST_SUITE_P(, ConfigurationFaults, testing::ValuesIn(kFaults), CaseName<Fault>);

TEST_F(Configuration, IsReadAtEachNewConnection) {
  StartClient();
  m_script.Always("QD_PLMQuery", plm_client::Reply::Text("first"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"first");

  // given another client under another name
  plm_client::Script other_script;
  other_script.Always("QD_PLMQuery", plm_client::Reply::Text("other"));
  const plm_client::Client other(plm_client::Settings{.pipe = m_pipe + L"-other"}, std::ref(other_script));
  Configure("{\"pipe\":\"" + CStringHelper::UnicodeToUTF8(m_pipe) + "-other\"}");

  // then the open connection is still used, and the next one leads to the other client
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"first");
  m_client.reset();
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"other");
}

TEST_F(Configuration, MayHaveAnotherFileName) {
  m_folder.Write(LR"(config\Other\Second.json)",
                 "{\"pipe\":\"" + CStringHelper::UnicodeToUTF8(m_pipe) + "\"}");
  plm_client::Settings settings{.pipe = m_pipe};
  m_script.Always("QD_PLMQuery", plm_client::Reply::Text("x"));
  m_client.emplace(settings, std::ref(m_script));
  CZALCmdInvoker other(L"Other", L"Second.json");
  EXPECT_EQ(other.Invoke(L"QD_PLMQuery", L""), L"x");
}

/// A default file installed beside this program, with a name that no other test uses.
class InstalledDefault {
 public:
  explicit InstalledDefault(std::string_view json) {
    m_folder = BesideTests(L"config");
    CreateDirectoryW(m_folder.c_str(), nullptr);
    WriteFileBytes(m_folder + L'\\' + Name(), json);
  }
  InstalledDefault(const InstalledDefault&) = delete;
  InstalledDefault& operator=(const InstalledDefault&) = delete;
  ~InstalledDefault() {
    DeleteFileW((m_folder + L'\\' + Name()).c_str());
    RemoveDirectoryW(m_folder.c_str());
  }

  const std::wstring& Name() const { return m_name; }

 private:
  const std::wstring m_name = L"invoker-test-" + std::to_wstring(GetCurrentProcessId()) + L".json";
  std::wstring m_folder;
};

TEST_F(Configuration, IsTheInstalledFileIfTheFolderHasNoFile) {
  // given a pipe that only the installed file names
  StartClient();
  m_script.Always("QD_PLMQuery", plm_client::Reply::Text("x"));
  const InstalledDefault installed("{\"pipe\":\"" + CStringHelper::UnicodeToUTF8(m_pipe) + "\"}");
  {
    CZALCmdInvoker other(L"Test", installed.Name());
    EXPECT_EQ(other.Invoke(L"QD_PLMQuery", L""), L"x");
  }

  // then a file in the configuration folder replaces it
  m_folder.Write(LR"(config\Test\)" + installed.Name(), R"({"pipe":"tavo-no-such-pipe"})");
  CZALCmdInvoker other(L"Test", installed.Name());
  m_boxes.Expect(IDOK);
  EXPECT_EQ(other.Invoke(L"QD_PLMQuery", L""), L"");
  ExpectOneLine(L"QD_PLMQuery", L"there is no pipe \\\\.\\pipe\\tavo-no-such-pipe");
}

TEST_F(Configuration, WithoutAPipeConnectsToTheClientOfThisUser) {
  Configure("{}");
  m_client.emplace(plm_client::Settings{}, std::ref(m_script));
  m_script.Always("QD_PLMQuery", plm_client::Reply::Text("x"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
}

TEST_F(Configuration, WithADeviceThatIsNotAPipeReachesNoClient) {
  Configure(R"({"pipe":"..\\NUL"})");
  m_boxes.Expect(IDOK);
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  ExpectOneLine(L"QD_PLMQuery", LR"(\\.\pipe\..\NUL is not a pipe)");
}

struct PipeName {
  const char* name;
  const wchar_t* end;
};

void PrintTo(const PipeName& pipe, std::ostream* stream) { *stream << pipe.name; }

class PipeNames : public InvokerFixture, public testing::WithParamInterface<PipeName> {};

TEST_P(PipeNames, MayContainAnyLegalCharacter) {
  const std::wstring name = m_pipe + GetParam().end;
  m_script.Always("QD_PLMQuery", plm_client::Reply::Text("x"));
  m_client.emplace(plm_client::Settings{.pipe = name}, std::ref(m_script));
  Configure("{\"pipe\":" + plm_client::JsonString(CStringHelper::UnicodeToUTF8(name)) + "}");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
}

const PipeName kPipeNames[] = {{"Blanks", L" with blanks"},
                               {"OtherScripts", L"\u6D4B\u8BD5-\u00DC"},
                               {"Quotes", L"\"quoted\""},
                               {"CharactersForbiddenInFileNames", L"<a|b>*?:"},
                               {"PercentAndBraces", L"%1{}"}};
INSTANTIATE_TEST_SUITE_P(, PipeNames, testing::ValuesIn(kPipeNames), CaseName<PipeName>);

}  // namespace
