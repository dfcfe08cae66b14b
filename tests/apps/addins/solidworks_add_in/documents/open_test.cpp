// Opening files that the PLM client names.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "heap_blocks.h"
#include "list_difference.h"
#include "log_line.h"
#include "opening_faults.h"
#include "result_codes.h"
#include "shown_texts.h"

namespace {

std::wstring FailedLine(const std::wstring& path, HRESULT code) {
  return ErrorLine(798, L"OpenFilePath", L"OpenDoc6 failed at " + path, code);
}

/// A command whose answer may name files to open.
struct OpenCommand {
  const wchar_t* callback;
  const char* command;
  bool sends_login;
};

class OpenFile : public AddInFixture, public testing::WithParamInterface<OpenCommand> {
 protected:
  void PickWith(const Texts& paths) {
    Answer(GetParam().command, FilesAnswer({{"OpenFile", paths}}));
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
  EXPECT_EQ(Asked(),
            Requests{GetParam().command + std::string(" ") + (GetParam().sends_login ? kLoginAnswer : "")});
  EXPECT_SAME_ENTRIES(HostCalls(), Texts{L"ISldWorks::OpenDoc6(\"" + assembly + L"\", 2, 1, \"\")",
                                         L"ISldWorks::ActivateDoc(\"" + assembly + L"\")",
                                         L"ISldWorks::OpenDoc6(\"" + part + L"\", 1, 1, \"\")",
                                         L"ISldWorks::ActivateDoc(\"" + part + L"\")",
                                         L"ISldWorks::OpenDoc6(\"" + drawing + L"\", 3, 1, \"\")",
                                         L"ISldWorks::ActivateDoc(\"" + drawing + L"\")"});
  EXPECT_EQ(m_host->OpenDocuments().size(), 3u);
  EXPECT_EQ(m_host->ActiveDocument()->path, drawing);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_P(OpenFile, ActivatesAFileThatIsAlreadyOpen) {
  ConnectAndLogIn();
  const std::wstring part = MakeModel(L"a.sldprt");
  m_host->Open(part);
  m_host->Open(MakeModel(L"b.sldprt"));
  PickWith({part});
  EXPECT_EQ(m_host->OpenDocuments().size(), 2u);
  EXPECT_EQ(m_host->ActiveDocument()->path, part);
}

TEST_P(OpenFile, LogsAndShowsAFileThatCannotBeOpenedAndContinues) {
  ConnectAndLogIn();
  const std::wstring missing = m_folder.Path(L"missing.sldprt");
  const std::wstring part = MakeModel(L"part.sldprt");
  m_boxes->Expect(IDOK);
  std::size_t lines_at_box = 0;
  m_boxes->WhileUp([&] { lines_at_box = AddInLog().size(); });
  PickWith({missing, part});
  EXPECT_EQ(lines_at_box, 1u) << "logged before the message";
  ASSERT_EQ(m_boxes->Boxes().size(), 1u);
  EXPECT_EQ(m_boxes->Boxes()[0].text, shown::OpenFailed(missing));
  EXPECT_EQ(m_boxes->Boxes()[0].caption, L"Collaborative management");
  EXPECT_EQ(m_boxes->Boxes()[0].buttons, std::vector<int>{IDOK});
  EXPECT_EQ(AddInLog(), Texts{FailedLine(missing, S_OK)});
  EXPECT_EQ(m_host->ActiveDocument()->path, part);
}

/// A host tells in two ways that it cannot open a file; both are a failure.
TEST_P(OpenFile, LogsAndShowsEachOfSeveralFilesThatCannotBeOpened) {
  ConnectAndLogIn();
  const std::wstring first = m_folder.Path(L"first.sldprt");
  const std::wstring second = m_folder.Path(L"second.sldprt");
  m_boxes->Expect(IDOK);
  m_boxes->Expect(IDOK);
  PickWith({first, second});
  EXPECT_EQ(AddInLog(), (Texts{FailedLine(first, S_OK), FailedLine(second, E_FAIL)}));
  ASSERT_EQ(m_boxes->Boxes().size(), 2u);
  EXPECT_EQ(m_boxes->Boxes()[1].text, shown::OpenFailed(second));
}

TEST_P(OpenFile, LogsTheHostsErrorCode) {
  ConnectAndLogIn();
  const std::wstring part = MakeModel(L"x.sldprt");
  m_host->GetFaults().Fail(L"ISldWorks::OpenDoc6", 1, E_FAIL);
  m_boxes->Expect(IDOK);
  PickWith({part});
  EXPECT_EQ(AddInLog(), Texts{FailedLine(part, E_FAIL)});
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::ActivateDoc").size(), 0u);
}

TEST_P(OpenFile, SucceedsEvenIfTheHostReportsErrorsAndWarnings) {
  ConnectAndLogIn();
  const std::wstring part = MakeModel(L"x.sldprt");
  ReportErrorsAndWarnings(m_host->GetFaults());
  PickWith({part});
  EXPECT_EQ(HostCalls().back(), L"ISldWorks::ActivateDoc(\"" + part + L"\")");
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_P(OpenFile, FailsIfTheHostFailsAlthoughItReturnsADocument) {
  ConnectAndLogIn();
  const std::wstring part = MakeModel(L"x.sldprt");
  FailWithADocument(m_host->GetFaults(), E_ACCESSDENIED);
  m_boxes->Expect(IDOK);
  PickWith({part});
  EXPECT_EQ(m_boxes->Boxes().at(0).text, shown::OpenFailed(part));
  EXPECT_EQ(AddInLog(), Texts{FailedLine(part, E_ACCESSDENIED)});
  EXPECT_EQ(HostCalls(), Texts{L"ISldWorks::OpenDoc6(\"" + part + L"\", 1, 1, \"\")"});
}

TEST_P(OpenFile, SucceedsEvenIfActivatingFails) {
  ConnectAndLogIn();
  m_host->GetFaults().Fail(L"ISldWorks::ActivateDoc", 1, E_FAIL);
  PickWith({MakeModel(L"x.sldprt")});
  EXPECT_EQ(m_host->OpenDocuments().size(), 1u);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_P(OpenFile, PassesTypeNoneForAFileWithAnotherExtension) {
  ConnectAndLogIn();
  const std::wstring text = m_folder.Write(L"readme.txt", "text");
  m_boxes->Expect(IDOK);
  PickWith({text});
  EXPECT_EQ(HostCalls(), Texts{L"ISldWorks::OpenDoc6(\"" + text + L"\", 0, 1, \"\")"});
  EXPECT_EQ(m_boxes->Boxes().at(0).text, shown::OpenFailed(text));
  EXPECT_EQ(AddInLog(), Texts{FailedLine(text, S_OK)});
}

TEST_P(OpenFile, FindsTheTypeAnywhereInThePath) {
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

TEST_P(OpenFile, LeaksNoMemory) {
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
  // The simulated PLM client keeps each request in a few blocks of memory.
  constexpr std::size_t kBlocksOfARequest = 6;
  EXPECT_LT(HeapBlockCount(), blocks_before + 100 * kBlocksOfARequest);
}

TEST_P(OpenFile, DoesNothingWithoutFiles) {
  ConnectAndLogIn();
  for (const char* answer : {"", "{}", R"({"OpenFile":[]})", R"({"openfile":["C:\\a.sldprt"]})",
                             R"({"Method":"OpenFile"})", "{", "[1,2]", "null", R"({"OpenFile":["a")"}) {
    Answer(GetParam().command, answer);
    EXPECT_EQ(Pick(GetParam().callback).result, S_OK) << answer;
  }
  EXPECT_EQ(HostCalls(), Texts{});
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_EQ(PlatformLog().size(), 4u) << "the answers that are not JSON objects";
}

TEST_P(OpenFile, ThrowsThePlatformExceptionIfTheMemberIsNotAnArrayOfStrings) {
  ConnectAndLogIn();
  const std::wstring no_array = L"json member [OpenFile] is not Array!";
  const std::wstring no_string = L"json member [OpenFile] has an element that is no string";
  for (const auto& [answer, fault] :
       {std::pair(R"({"OpenFile":"C:\\a.sldprt"})", no_array), std::pair(R"({"OpenFile":null})", no_array),
        std::pair(R"({"OpenFile":{}})", no_array), std::pair(R"({"OpenFile":["C:\\a.sldprt",1]})", no_string),
        std::pair(R"({"OpenFile":[["C:\\a.sldprt"]]})", no_string)}) {
    m_home.Reset();
    m_home.WriteConfiguration(L"PlmClient.json", "{}");
    Answer(GetParam().command, answer);
    const auto picked = Pick(GetParam().callback);
    EXPECT_EQ(picked.result, DISP_E_EXCEPTION) << answer;
    EXPECT_EQ(picked.code, hr::kJsonWrongType) << answer;
    EXPECT_EQ(picked.description, fault) << answer;
    ASSERT_EQ(m_home.LogLines().size(), 1u) << answer;
    EXPECT_NE(m_home.LogLines()[0].find(fault), std::wstring::npos);
  }
  EXPECT_EQ(HostCalls(), Texts{});
}

}  // namespace
