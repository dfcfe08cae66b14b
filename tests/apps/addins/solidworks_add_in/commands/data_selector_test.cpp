// Which files of an answer reach the host, and in which order.
#include <gtest/gtest.h>

#include "documents/documents_fixture.h"
#include "list_difference.h"
#include "result_codes.h"

namespace {

class DataSelector : public DocumentsFixture {
 protected:
  /// The calls that open, insert or replace files, as "METHOD FILE".
  Texts FileCalls() const {
    Texts calls;
    for (const auto& call : m_host->GetJournal().Calls()) {
      for (const wchar_t* method : {L"OpenDoc6", L"ActivateDoc", L"AddComponent5", L"ReplaceComponents2"}) {
        if (!call.method.ends_with(std::wstring(L"::") + method)) continue;
        const std::wstring path = call.arguments.substr(1, call.arguments.find(L'"', 1) - 1);
        calls.push_back(std::wstring(method) + L" " + path.substr(path.find_last_of(L'\\') + 1));
      }
    }
    return calls;
  }
};

/// A command whose answer may name files.
struct SelectionCommand {
  const wchar_t* callback;
  const char* command;
};

/// The commands whose answer may name files to open, insert and replace.
class SelectedFiles : public DataSelector, public testing::WithParamInterface<SelectionCommand> {
 protected:
  cad_host::PickResult PickWith(const std::string& answer) {
    Answer(GetParam().command, answer);
    return Pick(GetParam().callback);
  }
};

INSTANTIATE_TEST_SUITE_P(, SelectedFiles,
                         testing::Values(SelectionCommand{L"OpenDataSelector", "QD_PLMDataSelector"},
                                         SelectionCommand{L"PlmQuery", "QD_PLMQuery"}),
                         [](const auto& test) { return Utf8(test.param.callback); });

TEST_P(SelectedFiles, AreHandledInAFixedOrderOfTheirMembers) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring other = MakeModel(L"other.sldprt");
  m_folder.MakeFolder(L"download");
  const auto picked = PickWith(FilesAnswer(
      {{"ReplaceFile", {MakeModel(L"r1.sldprt"), MakeModel(L"r2.sldprt")}},
       {"ReplaceFileByCovering", {MakeModel(L"download\\c1.sldprt"), MakeModel(L"download\\c2.sldprt")}},
       {"Unknown", {other}},
       {"InsertFile", {MakeModel(L"i1.sldprt"), MakeModel(L"i2.sldprt")}},
       {"OpenFile", {other, assembly->path}}}));
  EXPECT_EQ(picked.result, S_OK);
  EXPECT_EQ(Asked(), std::vector{GetParam().command + std::string(" ") + kLoginAnswer});
  EXPECT_SAME_ENTRIES(
      FileCalls(), Texts{L"OpenDoc6 other.sldprt", L"ActivateDoc other.sldprt", L"OpenDoc6 Top.sldasm",
                         L"ActivateDoc Top.sldasm", L"OpenDoc6 i1.sldprt", L"AddComponent5 i1.sldprt",
                         L"OpenDoc6 i2.sldprt", L"AddComponent5 i2.sldprt", L"ReplaceComponents2 c1.sldprt",
                         L"ReplaceComponents2 c2.sldprt", L"ReplaceComponents2 r1.sldprt",
                         L"ReplaceComponents2 r2.sldprt"});
  EXPECT_SAME_ENTRIES(ComponentNames(*assembly),
                      Texts{L"r2.sldprt", L"nut.sldprt", L"r2.sldprt", L"i1.sldprt", L"i2.sldprt"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_P(SelectedFiles, MayBeEmpty) {
  ConnectAndLogIn();
  for (const char* answer :
       {"{}", "", R"({"OpenFile":[],"InsertFile":[],"ReplaceFileByCovering":[],"ReplaceFile":[]})",
        R"({"insertfile":["C:\\a.sldprt"],"Replacefile":["C:\\a.sldprt"]})",
        R"({"data":{"InsertFile":["C:\\a.sldprt"]}})", R"({"ReplaceFile":["C:\\a.sldprt"})"}) {
    EXPECT_EQ(PickWith(answer).result, S_OK) << answer;
  }
  EXPECT_EQ(HostCalls(), Texts{});
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_EQ(PlatformLog().size(), 1u) << "the answer that is cut off";
}

TEST_P(SelectedFiles, ComeFromTheFirstOfTwoMembersWithOneName) {
  ConnectAndLogIn();
  const std::wstring first = MakeModel(L"first.sldprt");
  PickWith(R"({"OpenFile":[")" + JsonEscaped(first) + R"("],"OpenFile":["C:\\second.sldprt"]})");
  EXPECT_EQ(FileCalls(), (Texts{L"OpenDoc6 first.sldprt", L"ActivateDoc first.sldprt"}));
}

/// A member of the wrong type, and the calls for the members that come before it.
struct WrongMember {
  const char* name;
  Texts before;
};

TEST_P(SelectedFiles, AreHandledUntilAMemberOfTheWrongTypeEndsTheCommand) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  m_folder.MakeFolder(L"download");
  const std::string inserted = JsonEscaped(MakeModel(L"i.sldprt"));
  const std::string covering = JsonEscaped(MakeModel(L"download\\c.sldprt"));
  const std::string top = JsonEscaped(assembly->path);
  const WrongMember members[] = {
      {"InsertFile", {L"OpenDoc6 Top.sldasm", L"ActivateDoc Top.sldasm"}},
      {"ReplaceFileByCovering",
       {L"OpenDoc6 Top.sldasm", L"ActivateDoc Top.sldasm", L"OpenDoc6 i.sldprt", L"AddComponent5 i.sldprt"}},
      {"ReplaceFile",
       {L"OpenDoc6 Top.sldasm", L"ActivateDoc Top.sldasm", L"OpenDoc6 i.sldprt", L"AddComponent5 i.sldprt",
        L"ReplaceComponents2 c.sldprt"}}};
  for (const WrongMember& wrong : members) {
    m_host->GetJournal().Clear();
    // The first member with a name counts.
    const auto picked =
        PickWith(std::string("{\"") + wrong.name + R"(":["C:\\x.sldprt",7],"OpenFile":[")" + top +
                 R"("],"InsertFile":[")" + inserted + R"("],"ReplaceFileByCovering":[")" + covering +
                 R"("],"ReplaceFile":["C:\\y.sldprt"]})");
    EXPECT_EQ(picked.result, DISP_E_EXCEPTION) << wrong.name;
    EXPECT_EQ(picked.code, hr::kJsonWrongType) << wrong.name;
    EXPECT_EQ(Utf8(picked.description),
              std::string("json member [") + wrong.name + "] has an element that is no string");
    EXPECT_SAME_ENTRIES(FileCalls(), wrong.before) << wrong.name;
  }
  EXPECT_EQ(AddInLog(), Texts{});
}

TEST_P(SelectedFiles, AreAllTriedEvenIfOneFails) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  m_folder.MakeFolder(L"download");
  const std::wstring missing = m_folder.Path(L"missing.sldprt");
  m_host->GetFaults().ReturnFalse(L"ReplaceComponents2",
                                  2);  // for r1; c1 is missing, so the first call is for c2
  for (int box = 0; box < 4; ++box) ExpectBox();
  const auto picked = PickWith(FilesAnswer(
      {{"OpenFile", {missing, assembly->path}},
       {"InsertFile", {missing, MakeModel(L"i.sldprt")}},
       {"ReplaceFileByCovering", {m_folder.Path(L"download\\c1.sldprt"), MakeModel(L"download\\c2.sldprt")}},
       {"ReplaceFile", {MakeModel(L"r1.sldprt"), MakeModel(L"r2.sldprt")}}}));
  EXPECT_EQ(picked.result, S_OK);
  EXPECT_SAME_ENTRIES(ComponentNames(*assembly),
                      Texts{L"r2.sldprt", L"nut.sldprt", L"r2.sldprt", L"i.sldprt"});
  EXPECT_SAME_ENTRIES(BoxTexts(), Texts{shown::OpenFailed(missing), shown::OpenFailed(missing),
                                        shown::kReplacementFailed, shown::kReplacementFailed});
  EXPECT_EQ(AddInLog().size(), 4u);
  EXPECT_EQ(m_host->ActiveDocument(), assembly);
}

TEST_P(SelectedFiles, AreNotTriedAfterAnException) {
  ConnectAndLogIn();
  OpenAssembly();
  const std::wstring part = MakeModel(L"i.sldprt");
  m_host->GetFaults().ReturnNothing(L"IModelDoc2::get_ISelectionManager");
  const auto picked = PickWith(FilesAnswer({{"InsertFile", {part, part}}, {"ReplaceFile", {part}}}));
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, E_POINTER);
  EXPECT_EQ(FileCalls(), Texts{L"OpenDoc6 i.sldprt"});
}

/// The commands whose answer may name only files to open.
class SelectedFilesToOpen : public SelectedFiles {};

INSTANTIATE_TEST_SUITE_P(, SelectedFilesToOpen,
                         testing::Values(SelectionCommand{L"PlmMyCheckOutList", "QD_PLMMyCheckOutList"},
                                         SelectionCommand{L"PlmTaskManage", "QD_PLMTaskManage"}),
                         [](const auto& test) { return Utf8(test.param.callback); });

TEST_P(SelectedFilesToOpen, AreOpenedAndOtherMembersIgnored) {
  ConnectAndLogIn();
  OpenAssembly();
  const std::wstring part = MakeModel(L"x.sldprt");
  EXPECT_EQ(PickWith(R"({"InsertFile":7,"ReplaceFile":[")" + JsonEscaped(part) +
                     R"("],"ReplaceFileByCovering":null,"OpenFile":[")" + JsonEscaped(part) + R"("]})")
                .result,
            S_OK);
  EXPECT_EQ(FileCalls(), (Texts{L"OpenDoc6 x.sldprt", L"ActivateDoc x.sldprt"}));
}

}  // namespace
