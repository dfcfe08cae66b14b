// The sink for the host's application events.
#include <gtest/gtest.h>

#include <vector>

#include "add_in_fixture.h"
#include "case_name.h"
#include "connection/application_event_sink.h"
#include "host/application_events.h"
#include "module/com_object.h"

namespace {

constexpr long kRegisteredMajor = 31;

class EventSink : public AddInFixture {
 protected:
  static IDispatchPtr MakeSink(WORD major = kRegisteredMajor) {
    IDispatchPtr sink;
    EXPECT_EQ(CreateComObject<ApplicationEventSink>(IID_PPV_ARGS(&sink), major), S_OK);
    return sink;
  }

  /// Raises an event; the last argument comes first. `names` are the positions of named arguments.
  static HRESULT Raise(IDispatch* sink, DISPID id, std::vector<_variant_t> arguments,
                       std::vector<DISPID> names = {}, VARIANT* result = nullptr) {
    DISPPARAMS parameters{arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                          static_cast<UINT>(names.size())};
    return sink->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &parameters, result, nullptr, nullptr);
  }

  static std::vector<_variant_t> TextArguments(std::size_t count) {
    return std::vector<_variant_t>(count, L"text");
  }

  /// The advised sink looks for events in the type library of version `major`, which is registered while a
  /// host of this version runs. @param running the version of the host that runs already.
  void ExpectLooksInTypeLibrary(WORD major, WORD running) const {
    const std::vector<IDispatchPtr> sinks = m_host->EventSinks();
    ASSERT_EQ(sinks.size(), 1u);
    EXPECT_EQ(Raise(sinks[0], 4, TextArguments(9)), running == major ? E_FAIL : S_OK);
    const cad_host::Host other({.state_folder = m_folder.Path(L"other"), .revision = std::to_wstring(major)});
    EXPECT_EQ(Raise(sinks[0], 4, TextArguments(9)), E_FAIL);
  }
};

TEST_F(EventSink, HandlesTheEventsOfOpeningCreatingAndClosingDocuments) {
  Connect();
  EXPECT_EQ(m_host->AdvisedSinks(), 1u);
  m_host->GetJournal().Clear();
  m_host->Open(MakeModel(L"a.sldprt"));
  m_host->New(swDocASSEMBLY);
  m_host->Close(m_host->ActiveDocument());
  int events = 0;
  for (const auto& entry : m_host->GetJournal().Entries()) {
    if (entry.kind != cad_host::JournalEntry::Kind::kEvent) continue;
    EXPECT_EQ(entry.result, S_OK) << Utf8(entry.Text());
    ++events;
  }
  EXPECT_GE(events, 5);
}

TEST_F(EventSink, ReturnsItselfForTheEventInterface) {
  const IDispatchPtr sink = MakeSink();
  IUnknown* as_events = nullptr;
  ASSERT_EQ(sink->QueryInterface(host::kApplicationEventsId, reinterpret_cast<void**>(&as_events)), S_OK);
  EXPECT_EQ(as_events, static_cast<IUnknown*>(sink));
  as_events->Release();
  IPersist* other = nullptr;
  EXPECT_EQ(sink->QueryInterface(IID_PPV_ARGS(&other)), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
}

/// An event of the table, and arguments of its types; the last argument comes first.
struct HandledEvent {
  DISPID id;
  std::vector<_variant_t> arguments;
};

std::vector<HandledEvent> HandledEvents() {
  return {{4, {}},
          {11, {L"path", L"title"}},
          {12, {L"template", 1L, _variant_t(static_cast<IDispatch*>(nullptr), false)}},
          {5, {}},
          {22, {L"file"}}};
}

TEST_F(EventSink, HandlesTheFiveEventsOfItsTable) {
  const IDispatchPtr sink = MakeSink();
  for (const HandledEvent& event : HandledEvents()) {
    EXPECT_EQ(Raise(sink, event.id, event.arguments), S_OK) << event.id;
  }
}

/// The host passes a VARIANT or a null pointer for the result.
TEST_F(EventSink, ReturnsTheHandlersResultInTheCallersVariant) {
  Connect();
  const std::vector<IDispatchPtr> sinks = m_host->EventSinks();
  ASSERT_EQ(sinks.size(), 1u);
  for (const HandledEvent& event : HandledEvents()) {
    VARIANT result;
    VariantInit(&result);
    V_I4(&result) = -1;
    EXPECT_EQ(Raise(sinks[0], event.id, event.arguments, {}, &result), S_OK) << event.id;
    EXPECT_EQ(V_VT(&result), VT_I4) << event.id;
    EXPECT_EQ(V_I4(&result), S_OK) << event.id;
    EXPECT_EQ(Raise(sinks[0], event.id, event.arguments), S_OK) << event.id;
  }
}

TEST_F(EventSink, ReturnsNoResultForOtherEvents) {
  VARIANT result;
  VariantInit(&result);
  EXPECT_EQ(Raise(MakeSink(), 999, {}, {}, &result), S_OK);
  EXPECT_EQ(V_VT(&result), VT_EMPTY);
}

TEST_F(EventSink, AcceptsNamedArguments) { EXPECT_EQ(Raise(MakeSink(), 11, TextArguments(2), {0, 1}), S_OK); }

TEST_F(EventSink, FailsForACallWithMoreThanEightArguments) {
  const IDispatchPtr sink = MakeSink();
  for (const DISPID id : {4, 5, 11, 12, 22}) {
    EXPECT_EQ(Raise(sink, id, TextArguments(9)), E_FAIL) << id;
    EXPECT_EQ(Raise(sink, id, TextArguments(200)), E_FAIL) << id;
  }
  EXPECT_EQ(Raise(sink, 4, TextArguments(8)), S_OK);
}

TEST_F(EventSink, FailsForANamedArgumentAtTheNinthPosition) {
  const IDispatchPtr sink = MakeSink();
  EXPECT_EQ(Raise(sink, 4, TextArguments(1), {8}), E_FAIL);
  EXPECT_EQ(Raise(sink, 4, TextArguments(1), {-3}), E_FAIL);
  EXPECT_EQ(Raise(sink, 4, TextArguments(1), {7}), S_OK);
}

TEST_F(EventSink, FailsForACallWithTooFewArguments) {
  EXPECT_EQ(Raise(MakeSink(), 11, TextArguments(1)), DISP_E_PARAMNOTFOUND);
}

TEST_F(EventSink, IgnoresOtherEventsWithoutCheckingTheirArguments) {
  const IDispatchPtr sink = MakeSink();
  for (const DISPID id : {0, 1, 20, 32, 999, -1}) EXPECT_EQ(Raise(sink, id, TextArguments(9)), S_OK) << id;
}

TEST_F(EventSink, IgnoresEventsIfTheirTypeLibraryIsMissing) {
  EXPECT_EQ(Raise(MakeSink(kRegisteredMajor + 1), 4, TextArguments(9)), S_OK);
  EXPECT_EQ(Raise(MakeSink(0), 4, TextArguments(9)), S_OK);
}

/// The object was connected to a host that told its revision, which counts no more.
TEST_F(EventSink, LooksForEventsInVersion0IfTheHostDoesNotTellItsRevision) {
  for (const HRESULT result : {E_FAIL, S_OK}) {
    RestartHost();
    Connect();
    EXPECT_TRUE(DisconnectObject());
    m_host->GetFaults().Fail(L"ISldWorks::RevisionNumber", 1, result);
    EXPECT_TRUE(ReconnectObject());
    ExpectLooksInTypeLibrary(0, kRegisteredMajor);
    EXPECT_TRUE(Disconnect());
  }
}

/// The major version of the type library that a host of a revision registers, and the major version that the
/// sink of the add-in looks for in this host.
struct Revision {
  const char* name;
  const wchar_t* revision;
  WORD host_major;
  WORD sink_major;
};

class AdvisedSink : public EventSink, public testing::WithParamInterface<Revision> {};

TEST_P(AdvisedSink, LooksForEventsInTheTypeLibraryOfTheHostsMajorVersion) {
  const Revision& row = GetParam();
  RestartHost(row.revision);
  Connect();
  ExpectLooksInTypeLibrary(row.sink_major, row.host_major);
}

INSTANTIATE_TEST_SUITE_P(, AdvisedSink,
                         testing::Values(Revision{"ThreeNumbers", L"31.2.1", 31, 31},
                                         Revision{"OneNumber", L"31", 31, 31},
                                         Revision{"NumberInOtherText", L" 31x", 31, 31},
                                         Revision{"OlderVersion", L"30.0.0", 30, 30},
                                         Revision{"OldestWithEvents", L"14.0", 14, 14},
                                         Revision{"TooOld", L"13.9", 13, 0},
                                         Revision{"OneDigit", L"9.0", 9, 0}, Revision{"Empty", L"", 0, 0},
                                         Revision{"NoNumber", L"x31", 0, 0},
                                         // 65567 is 31 in 16 bits
                                         Revision{"MoreThan16Bits", L"65567.0", 31, 31}),
                         CaseName<Revision>);

}  // namespace
