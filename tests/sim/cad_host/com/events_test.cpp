// The application's events and the type library that describes them.
#include "host/application_events.h"
#include "host_fixture.h"
#include "test_add_in.h"

namespace {

// The ids of the events that the host raises.
constexpr DISPID kActiveDocChange = 4;
constexpr DISPID kActiveModelDocChange = 5;
constexpr DISPID kDocumentLoad = 11;
constexpr DISPID kFileNew2 = 12;
constexpr DISPID kFileOpenPre = 21;
constexpr DISPID kFileOpenPost = 22;
constexpr DISPID kFileClose = 32;

class EventsTest : public HostTest {
 protected:
  EventsTest() { m_point->Advise(static_cast<IDispatch*>(&m_sink), &m_cookie); }

  void TearDown() override {
    EXPECT_EQ(m_point->Unadvise(m_cookie), S_OK);
    EXPECT_EQ(Host().AdvisedSinks(), 0u);
    EXPECT_EQ(m_sink.References(), 0u);
    m_point = nullptr;
    HostTest::TearDown();
  }

  IConnectionPointPtr FindPoint(REFIID iid, HRESULT expected) {
    const ISldWorksPtr application = Host().Application();
    IConnectionPointContainerPtr container;
    application->QueryInterface(IID_PPV_ARGS(&container));
    IConnectionPointPtr point;
    EXPECT_EQ(container->FindConnectionPoint(iid, &point), expected);
    return point;
  }

  using Event = TestAddIn::Event;

  TestAddIn m_sink;
  IConnectionPointPtr m_point = FindPoint(host::kApplicationEventsId, S_OK);
  DWORD m_cookie = 0;
};

TEST_F(EventsTest, OpeningAFileRaisesItsEventsInOrder) {
  const std::wstring path = MakePart(L"bolt.sldprt");
  Host().Open(path);
  EXPECT_EQ(m_sink.events, (std::vector<Event>{{kFileOpenPre, {VT_BSTR}, {path}},
                                               {kDocumentLoad, {VT_BSTR, VT_BSTR}, {L"bolt.sldprt", path}},
                                               {kActiveDocChange, {}, {}},
                                               {kActiveModelDocChange, {}, {}},
                                               {kFileOpenPost, {VT_BSTR}, {path}}}));
}

TEST_F(EventsTest, ARefusedFileRaisesNoEvent) {
  EXPECT_THROW(Host().Open(m_folder.Path(L"missing.sldprt")), cad_host::HostError);
  EXPECT_EQ(m_sink.events, std::vector<Event>{});
}

TEST_F(EventsTest, ANewDocumentRaisesEvents) {
  Host().New(swDocASSEMBLY);
  EXPECT_EQ(m_sink.events, (std::vector<Event>{{kFileNew2, {VT_DISPATCH, VT_I4, VT_BSTR}, {L""}},
                                               {kActiveDocChange, {}, {}},
                                               {kActiveModelDocChange, {}, {}}}));
}

TEST_F(EventsTest, ActivatingAndClosingRaiseEvents) {
  const auto first = Host().New(swDocPART);
  Host().New(swDocPART);
  m_sink.events.clear();
  Host().Activate(first);
  Host().Activate(first);
  EXPECT_EQ(m_sink.events, (std::vector<Event>{{kActiveDocChange, {}, {}}, {kActiveModelDocChange, {}, {}}}));
  m_sink.events.clear();
  Host().Close(first);
  EXPECT_EQ(m_sink.events, (std::vector<Event>{{kFileClose, {VT_BSTR, VT_I4}, {L"Part1"}},
                                               {kActiveDocChange, {}, {}},
                                               {kActiveModelDocChange, {}, {}}}));
}

TEST_F(EventsTest, TheJournalContainsEvents) {
  const std::wstring path = MakePart(L"bolt.sldprt");
  Host().Open(path);
  EXPECT_TRUE(Journal().Contains(L"event DocumentLoadNotify(\"bolt.sldprt\", \"" + path + L"\")"));
}

/// A second sink, which fails too, is still called.
TEST_F(EventsTest, AFailingSinkIsTheResultOfTheEvent) {
  TestAddIn second;
  DWORD cookie = 0;
  m_point->Advise(static_cast<IDispatch*>(&second), &cookie);
  m_sink.event_result = E_FAIL;
  second.event_result = E_ABORT;
  Host().New(swDocPART);
  EXPECT_EQ(Journal().Of(L"FileNewNotify2").at(0).result, E_FAIL);
  EXPECT_TRUE(Journal().Contains(L"sink 1 failed: "));
  EXPECT_TRUE(Journal().Contains(L"sink 2 failed: "));
  EXPECT_EQ(second.events.size(), m_sink.events.size());
  m_sink.event_result = S_OK;
  EXPECT_EQ(m_point->Unadvise(cookie), S_OK);
  Journal().Clear();
  Host().New(swDocPART);
  EXPECT_EQ(Journal().Of(L"FileNewNotify2").at(0).result, S_OK);
}

TEST_F(EventsTest, HasNoOtherConnectionPoints) {
  EXPECT_FALSE(FindPoint(__uuidof(IDispatch), CONNECT_E_NOCONNECTION));
}

TEST_F(EventsTest, RefusesASinkOfAnotherInterface) {
  DWORD cookie = 1;
  EXPECT_EQ(m_point->Advise(m_point, &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0u);
  EXPECT_EQ(m_point->Unadvise(77), CONNECT_E_NOCONNECTION);
}

struct EventCase {
  DISPID id;
  const wchar_t* name;
  std::vector<VARTYPE> arguments;
};

// All application events of the host, with the types of their arguments.
const EventCase kEvents[] = {
    {1, L"FileOpenNotify", {VT_BSTR}},
    {2, L"FileNewNotify", {VT_DISPATCH, VT_I4}},
    {3, L"DestroyNotify", {}},
    {4, L"ActiveDocChangeNotify", {}},
    {5, L"ActiveModelDocChangeNotify", {}},
    {6, L"PropertySheetCreateNotify", {VT_DISPATCH, VT_I4}},
    {7, L"NonNativeFileOpenNotify", {VT_BSTR}},
    {8, L"LightSheetCreateNotify", {VT_DISPATCH, VT_I4, VT_I4}},
    {9, L"DocumentConversionNotify", {VT_BSTR}},
    {11, L"DocumentLoadNotify", {VT_BSTR, VT_BSTR}},
    {12, L"FileNewNotify2", {VT_DISPATCH, VT_I4, VT_BSTR}},
    {13, L"FileOpenNotify2", {VT_BSTR}},
    {14, L"ReferenceNotFoundNotify", {VT_BSTR}},
    {15, L"PromptForFilenameNotify", {VT_I4, VT_BSTR, VT_I4, VT_I4}},
    {16, L"BeginTranslationNotify", {VT_BSTR, VT_I4}},
    {17, L"EndTranslationNotify", {VT_BSTR, VT_I4}},
    {20, L"OnIdleNotify", {}},
    {21, L"FileOpenPreNotify", {VT_BSTR}},
    {22, L"FileOpenPostNotify", {VT_BSTR}},
    {23, L"ReferencedFilePreNotify", {VT_BSTR}},
    {24, L"BeginRecordNotify", {}},
    {25, L"EndRecordNotify", {}},
    {26, L"FileNewPreNotify", {VT_I4, VT_BSTR}},
    {27, L"JournalWriteNotify", {VT_BSTR, VT_I4}},
    {28, L"DocumentLoadNotify2", {VT_BSTR, VT_BSTR}},
    {29, L"CommandCloseNotify", {VT_I4, VT_I4}},
    {30, L"PromptForMultipleFileNamesNotify", {VT_I4, VT_PTR, VT_PTR, VT_I4}},
    {31, L"CommandOpenPreNotify", {VT_I4, VT_I4}},
    {32, L"FileCloseNotify", {VT_BSTR, VT_I4}},
    {33, L"BackgroundProcessingStartNotify", {VT_BSTR}},
    {34, L"BackgroundProcessingEndNotify", {VT_BSTR}},
    {35, L"InterfaceBrightnessThemeChangeNotify", {VT_I4, VT_PTR}},
    {36, L"ReferencedFilePreNotify2", {VT_BSTR, VT_I4}},
    {37, L"Begin3DInterconnectTranslationNotify", {VT_BSTR}},
    {38, L"End3DInterconnectTranslationNotify", {VT_BSTR}},
};

/// The description of an event in a type library.
EventCase Describe(const ITypeInfoPtr& events, UINT index, CComBSTR& name) {
  FUNCDESC* function = nullptr;
  EXPECT_EQ(events->GetFuncDesc(index, &function), S_OK);
  events->GetDocumentation(function->memid, &name, nullptr, nullptr, nullptr);
  EventCase event{.id = function->memid, .name = name, .arguments = {}};
  for (SHORT argument = 0; argument < function->cParams; ++argument) {
    event.arguments.push_back(function->lprgelemdescParam[argument].tdesc.vt);
  }
  for (VARTYPE& type : event.arguments) {
    // A pointer to an interface is a pointer in the library and a dispatch pointer in a call.
    const auto place = static_cast<std::size_t>(&type - event.arguments.data());
    const TYPEDESC& described = function->lprgelemdescParam[place].tdesc;
    if (type == VT_PTR && described.lptdesc->vt == VT_USERDEFINED) type = VT_DISPATCH;
  }
  events->ReleaseFuncDesc(function);
  return event;
}

HRESULT LoadEvents(ITypeInfoPtr& events, WORD major = 31) {
  ITypeLibPtr library;
  const HRESULT result = LoadRegTypeLib(host::kTypeLibraryId, major, 0, LOCALE_NEUTRAL, &library);
  if (SUCCEEDED(result)) library->GetTypeInfoOfGuid(host::kApplicationEventsId, &events);
  return result;
}

TEST(TypeLibraryTest, DescribesEveryEventWhileTheHostRuns) {
  const cad_host::Host host;
  ITypeInfoPtr events;
  ASSERT_EQ(LoadEvents(events), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(events->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->cFuncs, std::size(kEvents));
  for (UINT index = 0; index < std::size(kEvents); ++index) {
    CComBSTR name;
    const EventCase event = Describe(events, index, name);
    EXPECT_EQ(event.id, kEvents[index].id);
    EXPECT_STREQ(event.name, kEvents[index].name);
    EXPECT_EQ(event.arguments, kEvents[index].arguments) << event.id;
  }
  events->ReleaseTypeAttr(attributes);
}

TEST(TypeLibraryTest, HasTheHostsMajorVersion) {
  const cad_host::Host host({.revision = L"28.1.0"});
  ITypeInfoPtr events;
  EXPECT_EQ(LoadEvents(events, 28), S_OK);
  EXPECT_TRUE(events);
  EXPECT_EQ(LoadEvents(events, 31), TYPE_E_LIBNOTREGISTERED);
  const cad_host::Host newer;
  EXPECT_EQ(LoadEvents(events, 31), S_OK);
}

TEST(TypeLibraryTest, IsRegisteredOnlyWhileAHostRuns) {
  ITypeInfoPtr events;
  {
    const cad_host::Host host;
    const cad_host::Host second;
    EXPECT_EQ(LoadEvents(events), S_OK);
  }
  EXPECT_EQ(LoadEvents(events), TYPE_E_LIBNOTREGISTERED);
}

}  // namespace
