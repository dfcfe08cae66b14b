// Files that the PLM client names are opened in the host.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "heap_blocks.h"

namespace {

/// A JSON answer that names files to open.
std::string OpenAnswer(const std::vector<std::wstring>& paths) {
  std::string answer = R"({"OpenFile":[)";
  for (const std::wstring& path : paths) {
    std::string escaped;
    for (const char character : Utf8(path)) escaped += character == '\\' ? "\\\\" : std::string(1, character);
    answer += (answer.ends_with('[') ? "\"" : ",\"") + escaped + "\"";
  }
  return answer + "]}";
}

std::wstring FailedText(const std::wstring& path) { return L"打开文件" + path + L"失败"; }

std::wstring FailedLine(const std::wstring& path, const std::wstring& code) {
  return L"errormsg|ERROR|798|CSolidWorksAddIn::OpenFilePath|OpenDoc6 failed at " + path + L"<hr=0x" + code +
         L">";
}

/// The four commands whose answer can name files to open, with what they send.
struct OpenCommand {
  const wchar_t* callback;
  const char* command;
  bool sends_login;
};

class OpenFile : public AddInTest, public testing::WithParamInterface<OpenCommand> {
 protected:
  void PickWith(const std::vector<std::wstring>& paths) {
    Answer(GetParam().command, OpenAnswer(paths));
    EXPECT_EQ(Pick(GetParam().callback).result, S_OK);
  }
};

INSTANTIATE_TEST_SUITE_P(, OpenFile,
                         testing::Values(OpenCommand{L"OpenDataSelector", "QD_PLMDataSelector", true},
                                         OpenCommand{L"PlmQuery", "QD_PLMQuery", true},
                                         OpenCommand{L"PlmMyCheckOutList", "QD_PLMMyCheckOutList", false},
                                         OpenCommand{L"PlmTaskManage", "QD_PLMTaskManage", true}),
                         [](const auto& test) { return Utf8(test.param.callback); });

TEST_P(OpenFile, OpensSilentlyAndActivatesEachFileInOrder) {
  ConnectAndLogIn();
  const std::wstring assembly = MakeModel(L"Top.SLDASM");
  const std::wstring part = MakeModel(L"图纸 😀.sldprt");
  const std::wstring drawing = MakeModel(L"sheet.SldDrw");
  PickWith({assembly, part, drawing});
  EXPECT_EQ(Asked(), std::vector<std::string>{GetParam().command + std::string(" ") +
                                              (GetParam().sends_login ? kLoginAnswer : "")});
  EXPECT_EQ(HostCalls(), (std::vector<std::wstring>{L"ISldWorks::OpenDoc6(\"" + assembly + L"\", 2, 1, \"\")",
                                                    L"ISldWorks::ActivateDoc(\"" + assembly + L"\")",
                                                    L"ISldWorks::OpenDoc6(\"" + part + L"\", 1, 1, \"\")",
                                                    L"ISldWorks::ActivateDoc(\"" + part + L"\")",
                                                    L"ISldWorks::OpenDoc6(\"" + drawing + L"\", 3, 1, \"\")",
                                                    L"ISldWorks::ActivateDoc(\"" + drawing + L"\")"}));
  EXPECT_EQ(m_host->OpenDocuments().size(), 3u);
  EXPECT_EQ(m_host->ActiveDocument()->path, drawing);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

TEST_P(OpenFile, AsksTheHostAlsoForAFileThatIsOpenAlready) {
  ConnectAndLogIn();
  const std::wstring part = MakeModel(L"a.sldprt");
  m_host->Open(part);
  m_host->Open(MakeModel(L"b.sldprt"));
  PickWith({part});
  EXPECT_EQ(m_host->OpenDocuments().size(), 2u);
  EXPECT_EQ(m_host->ActiveDocument()->path, part);
}

TEST_P(OpenFile, TellsTheLogAndTheUserWhatCannotBeOpenedAndGoesOn) {
  ConnectAndLogIn();
  const std::wstring missing = m_folder.Path(L"missing.sldprt");
  const std::wstring part = MakeModel(L"part.sldprt");
  m_boxes->Expect(IDOK);
  std::size_t lines_at_box = 0;
  m_boxes->WhileUp([&] { lines_at_box = AddInLog().size(); });
  PickWith({missing, part});
  EXPECT_EQ(lines_at_box, 1u) << "the log is told first";
  ASSERT_EQ(m_boxes->Boxes().size(), 1u);
  EXPECT_EQ(m_boxes->Boxes()[0].text, FailedText(missing));
  EXPECT_EQ(m_boxes->Boxes()[0].caption, L"Collaborative management");
  EXPECT_EQ(m_boxes->Boxes()[0].buttons, std::vector<int>{IDOK});
  EXPECT_EQ(AddInLog(), std::vector<std::wstring>{FailedLine(missing, L"0")});
  EXPECT_EQ(m_host->ActiveDocument()->path, part);
}

TEST_P(OpenFile, LogsTheCodeOfAHostThatFails) {
  ConnectAndLogIn();
  const std::wstring part = MakeModel(L"x.sldprt");
  m_host->GetFaults().Fail(L"ISldWorks::OpenDoc6", 1, E_FAIL);
  m_boxes->Expect(IDOK);
  PickWith({part});
  EXPECT_EQ(AddInLog(), std::vector<std::wstring>{FailedLine(part, L"80004005")});
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::ActivateDoc").size(), 0u);
}

TEST_P(OpenFile, CountsAsOpenedAlsoWhereActivatingFails) {
  ConnectAndLogIn();
  m_host->GetFaults().Fail(L"ISldWorks::ActivateDoc", 1, E_FAIL);
  PickWith({MakeModel(L"x.sldprt")});
  EXPECT_EQ(m_host->OpenDocuments().size(), 1u);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

TEST_P(OpenFile, PassesAFileOfAnotherKindOnAsTypeNone) {
  ConnectAndLogIn();
  const std::wstring text = m_folder.Write(L"readme.txt", "text");
  m_boxes->Expect(IDOK);
  PickWith({text});
  EXPECT_EQ(HostCalls(), std::vector<std::wstring>{L"ISldWorks::OpenDoc6(\"" + text + L"\", 0, 1, \"\")"});
  EXPECT_EQ(m_boxes->Boxes().at(0).text, FailedText(text));
  EXPECT_EQ(AddInLog(), std::vector<std::wstring>{FailedLine(text, L"0")});
}

TEST_P(OpenFile, TakesTheTypeFromAnywhereInThePath) {
  ConnectAndLogIn();
  m_folder.MakeFolder(L"a.sldprt.bak");
  const std::wstring path = m_folder.Path(L"a.sldprt.bak\\b.sldasm");
  cad_host::ModelFile assembly;
  assembly.type = swDocASSEMBLY;
  cad_host::WriteModelFile(path, assembly);
  m_boxes->Expect(IDOK);
  PickWith({path});
  EXPECT_EQ(HostCalls().at(0), L"ISldWorks::OpenDoc6(\"" + path + L"\", 1, 1, \"\")");
}

TEST_P(OpenFile, LeavesNoMemoryBehind) {
  ConnectAndLogIn();
  const std::wstring part = MakeModel(L"part.sldprt");
  const auto rounds = [&](int count) {
    for (int round = 0; round < count; ++round) {
      PickWith({part});
      m_host->GetJournal().Clear();
    }
  };
  rounds(10);
  const auto blocks_before = HeapBlockCount();
  rounds(100);
  // The PLM client keeps each request: some blocks of the test's own.
  constexpr std::size_t kOfEachRecordedRequest = 6;
  EXPECT_LT(HeapBlockCount(), blocks_before + 100 * kOfEachRecordedRequest);
}

/// Answers without a file: nothing is opened, nothing said.
TEST_P(OpenFile, DoesNothingWithoutFiles) {
  ConnectAndLogIn();
  for (const char* answer : {"", "{}", R"({"OpenFile":[]})", R"({"openfile":["C:\\a.sldprt"]})",
                             R"({"Method":"OpenFile"})", "{", "[1,2]", "null", R"({"OpenFile":["a")"}) {
    Answer(GetParam().command, answer);
    EXPECT_EQ(Pick(GetParam().callback).result, S_OK) << answer;
  }
  EXPECT_EQ(HostCalls(), std::vector<std::wstring>{});
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

/// Members that are no array of strings.
TEST_P(OpenFile, RaisesThePlatformsExceptionForAMemberOfAnotherType) {
  ConnectAndLogIn();
  for (const char* answer : {R"({"OpenFile":"C:\\a.sldprt"})", R"({"OpenFile":null})", R"({"OpenFile":{}})",
                             R"({"OpenFile":["C:\\a.sldprt",1]})", R"({"OpenFile":[["C:\\a.sldprt"]]})"}) {
    m_home.Reset();
    m_home.WriteConfiguration(L"PlmClient.json", "{}");
    Answer(GetParam().command, answer);
    const auto picked = Pick(GetParam().callback);
    EXPECT_EQ(picked.result, DISP_E_EXCEPTION) << answer;
    EXPECT_EQ(picked.code, static_cast<HRESULT>(0xA3013001)) << answer;
    EXPECT_EQ(picked.description, L"json member [OpenFile] is not Array!") << answer;
    ASSERT_EQ(m_home.LogLines().size(), 1u) << answer;
    EXPECT_NE(m_home.LogLines()[0].find(L"json member [OpenFile] is not Array!"), std::wstring::npos);
  }
  EXPECT_EQ(HostCalls(), std::vector<std::wstring>{});
}

}  // namespace
