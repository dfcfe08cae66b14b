// Faults by name, and the journal of all calls.
#include "case_name.h"
#include "host/command_manager.h"
#include "host/custom_properties.h"
#include "host/model_doc.h"
#include "host_fixture.h"

namespace {

using cad_host::HostError;
using cad_host::JournalEntry;

class FaultsTest : public HostTest {
 protected:
  FaultsTest() { Host().New(swDocPART); }

  cad_host::Faults& Faults() { return Host().GetFaults(); }

  HRESULT AskActive(IModelDoc2** document = nullptr) {
    IModelDoc2Ptr unused;
    return Host().Application()->get_IActiveDoc2(document ? document : &unused);
  }

  /// A few host calls in a row, as an add-in makes them. @return the first failure.
  HRESULT ReadProperties() {
    IModelDoc2Ptr document;
    HRESULT result = AskActive(&document);
    IModelDocExtensionPtr extension;
    if (SUCCEEDED(result)) result = document->get_Extension(&extension);
    ICustomPropertyManagerPtr manager;
    if (SUCCEEDED(result)) result = extension->get_CustomPropertyManager(CComBSTR(L""), &manager);
    long count = 0;
    if (SUCCEEDED(result)) result = manager->get_Count(&count);
    return result;
  }
};

TEST_F(FaultsTest, FailsTheNthCallAndClearsItsResults) {
  Faults().Fail(L"ISldWorks::get_IActiveDoc2", 2, E_ACCESSDENIED);
  EXPECT_EQ(AskActive(), S_OK);
  IModelDoc2Ptr document;
  EXPECT_EQ(AskActive(&document), E_ACCESSDENIED);
  EXPECT_FALSE(document);
  EXPECT_EQ(AskActive(&document), S_OK);
  EXPECT_TRUE(document);
  EXPECT_TRUE(Journal().Contains(L"ISldWorks::get_IActiveDoc2() = 0x80070005, null [fault]"));
}

TEST_F(FaultsTest, CountsCallsFromWhenTheFaultIsSet) {
  AskActive();
  Faults().Fail(L"ISldWorks::get_IActiveDoc2", 1, E_FAIL);
  EXPECT_EQ(AskActive(), E_FAIL);
}

TEST_F(FaultsTest, FailsEveryCall) {
  Faults().Fail(L"get_IActiveDoc2", cad_host::Faults::kEvery, E_FAIL);
  EXPECT_EQ(AskActive(), E_FAIL);
  EXPECT_EQ(AskActive(), E_FAIL);
}

TEST_F(FaultsTest, ReturnsNothingOrFalse) {
  IModelDoc2Ptr document;
  Faults().ReturnNothing(L"ISldWorks::get_IActiveDoc2");
  EXPECT_EQ(AskActive(&document), S_OK);
  EXPECT_FALSE(document);
  Faults().ReturnFalse(L"ISldWorks::get_IActiveDoc2");
  EXPECT_EQ(AskActive(&document), S_FALSE);
  EXPECT_FALSE(document);
}

TEST_F(FaultsTest, AMethodWithAFaultDoesNotRun) {
  Faults().Fail(L"ISldWorks::CloseDoc", 1, S_OK);
  Host().Application()->CloseDoc(CComBSTR(L"Part1"));
  EXPECT_EQ(Host().OpenDocuments().size(), 1u);
}

TEST_F(FaultsTest, HidesTheResultOfAMethodThatRuns) {
  IDispatchPtr activated;
  Host().New(swDocPART);
  Faults().HideResult(L"ISldWorks::ActivateDoc");
  EXPECT_EQ(Host().Application()->ActivateDoc(CComBSTR(L"Part1"), &activated), S_OK);
  EXPECT_FALSE(activated);
  EXPECT_EQ(Host().ActiveDocument()->title, L"Part1");
}

TEST_F(FaultsTest, FailsAMethodThatRunsAndReturnsItsResults) {
  Faults().FailWithResults(L"ISldWorks::get_IActiveDoc2", 1, E_ACCESSDENIED);
  IModelDoc2Ptr document;
  EXPECT_EQ(AskActive(&document), E_ACCESSDENIED);
  EXPECT_TRUE(document);
  EXPECT_TRUE(Journal().Calls().back().fault);
}

TEST_F(FaultsTest, RunsAnActionBeforeACall) {
  Faults().Before(L"ISldWorks::get_IActiveDoc2", 1, [this] { Host().Close(Host().ActiveDocument()); });
  IModelDoc2Ptr document;
  EXPECT_EQ(AskActive(&document), S_OK);
  EXPECT_FALSE(document);
}

TEST_F(FaultsTest, FailsAQueryForOneInterface) {
  IModelDoc2Ptr document;
  AskActive(&document);
  Faults().Fail(L"IModelDoc2::QueryInterface(IDispatch)", 1, E_OUTOFMEMORY);
  IDispatch* object = document;
  EXPECT_EQ(document->QueryInterface(IID_PPV_ARGS(&object)), E_OUTOFMEMORY);
  EXPECT_EQ(object, nullptr);
}

TEST_F(FaultsTest, EveryCallOfAnOperationCanBeFailedInTurn) {
  Journal().Clear();
  ASSERT_EQ(ReadProperties(), S_OK);
  const auto calls = Journal().Calls();
  ASSERT_EQ(calls.size(), 4u);
  for (int index = 1; index <= static_cast<int>(calls.size()); ++index) {
    Faults().FailCall(index, E_ABORT);
    Journal().Clear();
    EXPECT_EQ(ReadProperties(), E_ABORT);
    EXPECT_EQ(Journal().Calls().back().method, calls[static_cast<std::size_t>(index) - 1].method);
    EXPECT_TRUE(Journal().Calls().back().fault);
  }
}

struct TextCase {
  const char* name;
  const wchar_t* text;
  std::vector<HRESULT> results;  // of calls of get_IActiveDoc2 in a row
};

class FaultTextTest : public FaultsTest, public testing::WithParamInterface<TextCase> {};

TEST_P(FaultTextTest, SetsTheFaultThatItDescribes) {
  Faults().Add(GetParam().text);
  for (const HRESULT result : GetParam().results) EXPECT_EQ(AskActive(), result);
}

const TextCase kTexts[] = {
    {"FailTheThird", L"fail the 3rd get_IActiveDoc2 with 80004005", {S_OK, S_OK, E_FAIL, S_OK}},
    {"FailTheNext", L"fail get_IActiveDoc2 with 0x8000FFFF", {E_UNEXPECTED, S_OK}},
    {"FailEvery", L"fail every ISldWorks::get_IActiveDoc2 with 80004005", {E_FAIL, E_FAIL}},
    {"ReturnFalse", L"the 2nd get_IActiveDoc2 returns S_FALSE", {S_OK, S_FALSE, S_OK}},
    {"ReturnNothing", L"get_IActiveDoc2 returns no document", {S_OK}},
    {"HideResult", L"get_IActiveDoc2 hides its result", {S_OK}},
};

INSTANTIATE_TEST_SUITE_P(, FaultTextTest, testing::ValuesIn(kTexts), CaseName<TextCase>);

TEST_F(FaultsTest, FailsIfTheTextIsNotAFault) {
  try {
    Faults().Add(L"break everything");
    FAIL() << "taken";
  } catch (const HostError& error) {
    EXPECT_NE(error.Message().find(L"\"break everything\""), std::wstring::npos);
  }
}

TEST_F(FaultsTest, FailsIfTheNumberOfTheCallIsNotValid) {
  for (const std::wstring number : {L"0", L"99999999999", L"99999999999999999999999999"}) {
    try {
      Faults().Add(L"fail the " + number + L" OpenDoc6 with 80004005");
      ADD_FAILURE() << "taken: " << testing::PrintToString(number);
    } catch (const HostError& error) {
      EXPECT_EQ(error.Message(), L"\"" + number + L"\" is not the number of a call; use 1 to 999999999");
    }
  }
}

TEST_F(FaultsTest, ListsFaultsThatNeverHappened) {
  Faults().Fail(L"ISldWorks::OpenDoc9", 3, E_FAIL);
  Faults().Fail(L"ISldWorks::get_IActiveDoc2", 1, E_FAIL);
  AskActive();
  EXPECT_EQ(Faults().Unused(),
            std::vector<std::wstring>{L"a fault never happened: call 3 of ISldWorks::OpenDoc9"});
  Faults().Clear();
}

TEST_F(FaultsTest, TheJournalHasCallsInOrderWithArgumentsAndResults) {
  Journal().Clear();
  const auto application = Host().Application();
  IDispatchPtr found;
  application->GetOpenDocumentByName(CComBSTR(L"nothing"), &found);
  application->CloseDoc(CComBSTR(L"Part1"));
  const auto& entries = Journal().Entries();
  ASSERT_GE(entries.size(), 3u);
  EXPECT_EQ(entries[0].kind, JournalEntry::Kind::kCall);
  EXPECT_EQ(entries[0].method, L"ISldWorks::GetOpenDocumentByName");
  EXPECT_EQ(entries[0].Interface(), L"ISldWorks");
  EXPECT_EQ(entries[0].arguments, L"\"nothing\"");
  EXPECT_EQ(entries[0].result, S_OK);
  EXPECT_EQ(entries[0].results, L"null");
  EXPECT_EQ(entries[1].Text(), L"ISldWorks::CloseDoc(\"Part1\") = S_OK");
  EXPECT_EQ(entries[2].Text(), L"event FileCloseNotify(\"Part1\", 0)");
  EXPECT_EQ(entries[2].depth, entries[1].depth + 1) << "nested in the call that raised it";
  EXPECT_EQ(Journal().Calls(L"ISldWorks::CloseDoc").size(), 1u);
}

TEST_F(FaultsTest, RefusesANullPointerForAResult) {
  EXPECT_EQ(Host().Application()->get_IActiveDoc2(nullptr), E_POINTER);
}

TEST(ReferencesTest, ListsTheObjectsThatAreStillHeld) {
  cad_host::Host host;
  host.New(swDocPART);
  EXPECT_TRUE(host.HeldReferences().empty());
  IModelDoc2Ptr document;
  host.Application()->get_IActiveDoc2(&document);
  const IModelDoc2Ptr again = document;
  ASSERT_EQ(host.HeldReferences().size(), 1u);
  EXPECT_EQ(host.HeldReferences()[0].object, L"part \"Part1\"");
  EXPECT_EQ(host.HeldReferences()[0].count, 2u);
}

TEST(ReferencesTest, TellsWhichObjectIsNoLongerHeld) {
  cad_host::Host host;
  host.New(swDocPART);
  ISldWorksPtr application = host.Application();
  IModelDoc2Ptr document;
  application->get_IActiveDoc2(&document);
  IModelDoc2Ptr again = document;
  std::vector<std::wstring> released;
  host.OnLastRelease([&](const std::wstring& object) { released.push_back(object); });
  document = nullptr;
  EXPECT_EQ(released, std::vector<std::wstring>{});
  again = nullptr;
  application = nullptr;
  EXPECT_EQ(released, (std::vector<std::wstring>{L"part \"Part1\"", L"the application"}));
}

TEST(ReferencesTest, ObjectsHeldAfterTheSessionAreDisconnected) {
  IModelDoc2Ptr document;
  ISldWorksPtr application;
  {
    cad_host::Host host;
    host.New(swDocPART);
    application = host.Application();
    application->get_IActiveDoc2(&document);
  }
  long type = 0;
  EXPECT_EQ(document->GetType(&type), RPC_E_DISCONNECTED);
  EXPECT_EQ(application->CloseDoc(nullptr), RPC_E_DISCONNECTED);
}

}  // namespace
