// The exceptions that leave the methods of the class itself. The guards that a host holds end them.
#include <gtest/gtest.h>

#include <comdef.h>

#include <optional>

#include "CZALException.h"
#include "class_under_test.h"
#include "documents/documents_fixture.h"
#include "method_case_name.h"
#include "result_codes.h"
#include "views.h"

namespace {

/// The exception of this type that `call` throws.
template <class Exception, class Call>
std::optional<Exception> Thrown(Call&& call) {
  try {
    call();
  } catch (const Exception& exception) {
    return exception;
  }
  return std::nullopt;
}

/// The code of the COM error that `call` throws; S_OK if it throws none.
template <class Call>
HRESULT ThrownComError(Call&& call) {
  const auto error = Thrown<_com_error>(std::forward<Call>(call));
  return error ? error->Error() : S_OK;
}

class RaisedException : public DocumentsFixture {
 protected:
  void SetUp() override {
    m_home.WriteConfiguration(L"View.json", ViewWithItems(2));
    const ClassUnderTest made = MakeClassUnderTest();
    m_held = made.held;
    m_class = made.object;
  }

  void TearDown() override {
    m_held = nullptr;
    m_class = nullptr;
    DocumentsFixture::TearDown();
  }

  void ConnectClass() { m_addIn = &m_host->Connect(m_held, L"class"); }

  void ConnectClassAndLogIn() {
    ConnectClass();
    ASSERT_EQ(m_class->PlmLogin(), S_OK);
  }

  /// The platform exception that leaves ConnectToSW with this View.json.
  CZALException ThrownWithView(std::string_view view) {
    m_home.WriteConfiguration(L"View.json", view);
    const auto exception = Thrown<CZALException>([this] { ConnectClass(); });
    if (exception) return *exception;
    ADD_FAILURE() << "no exception";
    return {0, L""};
  }

  ISwAddinPtr m_held;
  CSolidWorksAddIn* m_class = nullptr;
};

TEST_F(RaisedException, OfConnectingWithoutAHostIsInvalidPointer) {
  VARIANT_BOOL connected = VARIANT_FALSE;
  EXPECT_EQ(ThrownComError([&] { m_class->ConnectToSW(nullptr, 1, &connected); }), E_POINTER);
  EXPECT_EQ(connected, VARIANT_FALSE);
}

TEST_F(RaisedException, OfConnectingWithoutAMenuIsThePlatforms) {
  const CZALException exception = ThrownWithView(R"({"name":"PLM"})");
  EXPECT_EQ(exception.GetErrorCode(), hr::kJsonMemberMissing);
  EXPECT_EQ(exception.GetErrorMessage(), L"json member [Menu] not exist!");
}

TEST_F(RaisedException, OfConnectingWithAWrongMenuIsThePlatforms) {
  const CZALException exception = ThrownWithView(R"({"name":"PLM","Menu":{}})");
  EXPECT_EQ(exception.GetErrorCode(), hr::kJsonWrongType);
  EXPECT_EQ(exception.GetErrorMessage(), L"json member [Menu] is not Array!");
}

TEST_F(RaisedException, OfConnectingWithAMalformedFileNamesThePlace) {
  const CZALException exception = ThrownWithView("{\"name\": \"PLM\",\n \"Menu\": [{\"na");
  EXPECT_EQ(exception.GetErrorCode(), hr::kJsonWrongType);
  const std::wstring place = L"\"" + m_home.ConfigurationPath(L"View.json") + L"\", line 2, column 15: ";
  EXPECT_TRUE(exception.GetErrorMessage().starts_with(place)) << Utf8(exception.GetErrorMessage());
}

TEST_F(RaisedException, OfASecondConnectionIsAFailure) {
  ConnectClass();
  RemoveCommandGroup();
  const ISldWorksPtr application = m_host->Application();
  VARIANT_BOOL done = VARIANT_FALSE;
  EXPECT_EQ(ThrownComError([&] { m_class->ConnectToSW(application, m_addIn->cookie, &done); }), E_FAIL);
  EXPECT_EQ(done, VARIANT_FALSE);
}

TEST_F(RaisedException, OfEachCommandBeforeAConnectionIsInvalidPointer) {
  for (const DirectCommand& command : kAllCommands) {
    EXPECT_EQ(ThrownComError([&] { (m_class->*command.method)(); }), E_POINTER) << Utf8(command.name);
  }
  EXPECT_EQ(Asked(), Requests{});
}

TEST_F(RaisedException, OfEachCommandAfterAFailedConnectionIsInvalidPointerWithAndWithoutADocument) {
  ThrownWithView("{");
  for (const bool open : {false, true}) {
    if (open) m_host->Open(MakeModel(L"a.sldprt"));
    for (const DirectCommand& command : kAllCommands) {
      EXPECT_EQ(ThrownComError([&] { (m_class->*command.method)(); }), E_POINTER) << Utf8(command.name);
    }
  }
  EXPECT_EQ(Asked(), Requests{});
  EXPECT_EQ(m_boxes->Boxes().size(), 0u);
}

TEST_F(RaisedException, OfACommandThatSendsTheLoginIsInvalidPointerWhileLoggedOut) {
  ConnectClass();
  m_host->Open(MakeModel(L"a.sldprt"));
  for (const DirectCommand& command : kCommandsWithLogin) {
    EXPECT_EQ(ThrownComError([&] { (m_class->*command.method)(); }), E_POINTER) << Utf8(command.name);
  }
  EXPECT_EQ(Asked(), Requests{});
}

TEST_F(RaisedException, OfReplacingWithoutADocumentIsInvalidPointer) {
  ConnectClassAndLogIn();
  const std::wstring screw = MakeModel(L"screw.sldprt");
  EXPECT_EQ(ThrownComError([&] { m_class->ReplaceCurrentFile(screw); }), E_POINTER);
  Answer("QD_PLMDataSelector", FilesAnswer({{"ReplaceFile", {screw}}}));
  EXPECT_EQ(ThrownComError([&] { m_class->OpenDataSelector(); }), E_POINTER);
}

TEST_F(RaisedException, OfReplacingIsTheCodeOfAFailedQueryForTheAssembly) {
  ConnectClassAndLogIn();
  OpenAssembly();
  m_host->GetFaults().Fail(L"IModelDoc2::QueryInterface(IAssemblyDoc)", cad_host::Faults::kEvery,
                           E_OUTOFMEMORY);
  const std::wstring screw = MakeModel(L"screw.sldprt");
  EXPECT_EQ(ThrownComError([&] { m_class->ReplaceCurrentFile(screw); }), E_OUTOFMEMORY);
  Answer("QD_PLMDataSelector", FilesAnswer({{"ReplaceFile", {screw}}}));
  EXPECT_EQ(ThrownComError([&] { m_class->OpenDataSelector(); }), E_OUTOFMEMORY);
}

TEST_F(RaisedException, OfInsertingWithoutASelectionManagerIsInvalidPointer) {
  ConnectClassAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring part = MakeModel(L"x.sldprt");
  m_host->GetFaults().ReturnNothing(L"IModelDoc2::get_ISelectionManager", cad_host::Faults::kEvery);
  EXPECT_EQ(ThrownComError([&] { m_class->InsertChildFile(part); }), E_POINTER);
  m_host->Activate(assembly);
  Answer("QD_PLMDataSelector", FilesAnswer({{"InsertFile", {part}}}));
  EXPECT_EQ(ThrownComError([&] { m_class->OpenDataSelector(); }), E_POINTER);
}

/// A host call of ConnectToSW that returns null although the next step needs an object.
class RaisedForANullResult : public RaisedException, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(RaisedForANullResult, IsInvalidPointer) {
  m_host->GetFaults().ReturnNothing(GetParam());
  EXPECT_EQ(ThrownComError([this] { ConnectClass(); }), E_POINTER);
}

INSTANTIATE_TEST_SUITE_P(, RaisedForANullResult,
                         testing::Values(L"ISldWorks::QueryInterface(ISldWorks)",
                                         L"ISldWorks::GetCommandManager",
                                         L"ICommandManager::CreateCommandGroup2",
                                         L"ICommandManager::AddCommandTab", L"ICommandTab::AddCommandTabBox"),
                         MethodCaseName);

}  // namespace
