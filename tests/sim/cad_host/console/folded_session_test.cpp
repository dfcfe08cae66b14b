// The short form of the transcript.
#include <gtest/gtest.h>

#include <sstream>

#include "CStringHelper.h"
#include "console/folded_journal.h"
#include "console/session.h"
#include "host_fixture.h"

namespace {

using cad_host::Journal;
using Kind = cad_host::JournalEntry::Kind;

/// A call of the add-in's method `Run` that contains calls of the host.
class FoldedJournalTest : public testing::Test {
 protected:
  FoldedJournalTest() : m_run(m_journal.Begin(Kind::kCallee, L"Run", L"")) {}

  void Call(const std::wstring& method, const std::wstring& arguments = {}, HRESULT result = S_OK,
            bool fault = false) {
    m_journal.End(m_journal.Begin(Kind::kCall, method, arguments), result, {}, fault);
  }

  void Event(const std::wstring& name) { m_journal.End(m_journal.Begin(Kind::kEvent, name, {}), S_OK, {}); }

  /// The short form after Run has ended.
  std::wstring Folded() {
    m_journal.End(m_run, S_OK, {});
    const auto folded = cad_host::FoldJournal(m_journal.Entries(), 0, {L"MayRun"});
    m_leftOut = folded.left_out;
    return folded.text;
  }

  Journal m_journal;
  std::size_t m_run;
  std::size_t m_leftOut = 0;
};

TEST_F(FoldedJournalTest, ThreeCallsOfOneMethodAreOneLine) {
  for (const wchar_t* const name : {L"\"A\"", L"\"B\"", L"\"C\""})
    Call(L"ICommandGroup::AddCommandItem", name);
  Call(L"ICommandGroup::Activate");

  EXPECT_EQ(Folded(),
            L"-> Run() = S_OK\n"
            L"  ICommandGroup::AddCommandItem 3 times\n"
            L"  ICommandGroup::Activate() = S_OK\n");
  EXPECT_EQ(m_leftOut, 2u);
}

TEST_F(FoldedJournalTest, CallsInTurnsBecomeOneLineForEachMethod) {
  for (int document = 0; document < 3; ++document) {
    Call(L"ISldWorks::OpenDoc6");
    Event(L"FileOpenPreNotify");
    Call(L"ISldWorks::ActivateDoc");
  }

  EXPECT_EQ(Folded(), L"-> Run() = S_OK\n  ISldWorks::OpenDoc6 3 times\n  ISldWorks::ActivateDoc 3 times\n");
}

TEST_F(FoldedJournalTest, TwoCallsOfOneMethodKeepTheirArguments) {
  Call(L"IComponent2::SetSuppression2", L"0");
  Call(L"IComponent2::SetSuppression2", L"3");

  EXPECT_EQ(Folded(),
            L"-> Run() = S_OK\n"
            L"  IComponent2::SetSuppression2(0) = S_OK\n"
            L"  IComponent2::SetSuppression2(3) = S_OK\n");
  EXPECT_EQ(m_leftOut, 0u);
}

TEST_F(FoldedJournalTest, CallsThatFailStandAlone) {
  for (int call = 0; call < 3; ++call) Call(L"ICommandGroup::AddCommandItem");
  Call(L"ICommandGroup::AddCommandItem", L"\"D\"", E_FAIL);
  Call(L"ICommandGroup::AddCommandItem", L"\"E\"", S_OK, true);

  EXPECT_EQ(Folded(),
            L"-> Run() = S_OK\n"
            L"  ICommandGroup::AddCommandItem 3 times\n"
            L"  ICommandGroup::AddCommandItem(\"D\") = 0x80004005\n"
            L"  ICommandGroup::AddCommandItem(\"E\") = S_OK [fault]\n");
}

TEST_F(FoldedJournalTest, EqualFailuresAreOneLineWithTheCode) {
  for (int call = 0; call < 3; ++call) Call(L"ICommandGroup::AddCommandItem", L"", E_FAIL);

  EXPECT_EQ(Folded(), L"-> Run() = S_OK\n  ICommandGroup::AddCommandItem 3 times = 0x80004005\n");
}

TEST_F(FoldedJournalTest, CallsThatOnlyAskOrSetAPropertyAndEventsAreLeftOutUnlessTheyFail) {
  Call(L"IModelDoc2::GetType");
  Call(L"ISldWorks::get_IActiveDoc2");
  Call(L"IModelDoc2::IsOpenedViewOnly");
  Call(L"IModelDoc2::QueryInterface(IAssemblyDoc)");
  Call(L"ICommandGroup::put_HasMenu", L"true");
  Event(L"ActiveDocChangeNotify");
  Call(L"IModelDoc2::GetPathName", L"", E_FAIL);

  EXPECT_EQ(Folded(), L"-> Run() = S_OK\n  IModelDoc2::GetPathName() = 0x80004005\n");
  EXPECT_EQ(m_leftOut, 6u);
}

TEST_F(FoldedJournalTest, NotesStayAlsoWithinAnEntryThatIsLeftOut) {
  const std::size_t asking = m_journal.Begin(Kind::kCall, L"IModelDoc2::GetType", L"");
  m_journal.Note(L"message box");
  m_journal.End(asking, S_OK, {});

  EXPECT_EQ(Folded(),
            L"-> Run() = S_OK\n"
            L"  IModelDoc2::GetType() = S_OK\n"
            L"    note: message box\n");
}

TEST_F(FoldedJournalTest, EnableMethodsAreLeftOutUnlessTheyFail) {
  m_journal.End(m_run, S_OK, {});
  m_journal.End(m_journal.Begin(Kind::kCallee, L"MayRun", L""), S_OK, L"1");
  m_journal.End(m_journal.Begin(Kind::kCallee, L"MayRun", L""), E_FAIL, {});

  EXPECT_EQ(cad_host::FoldJournal(m_journal.Entries(), 0, {L"MayRun"}).text,
            L"-> Run() = S_OK\n-> MayRun() = 0x80004005\n");
}

TEST_F(FoldedJournalTest, BeginsWithTheEntryThatIsAskedFor) {
  m_journal.End(m_run, S_OK, {});
  m_journal.Note(L"second");

  EXPECT_EQ(cad_host::FoldJournal(m_journal.Entries(), 1, {}).text, L"note: second\n");
}

class FoldedSessionTest : public HostTest {
 protected:
  void Run(const std::wstring& line) {
    cad_host::Command command(L"demo.txt", 12, line);
    m_session.Run(command);
  }

  std::ostringstream m_output;
  cad_host::Session m_session{Host(), m_output, cad_host::Output::kFolded};
};

TEST_F(FoldedSessionTest, LeavesOutAnswersAndMetExpectations) {
  Run(L"new part");
  Run(L"expect active Part1");
  Run(L"print The end.");
  m_session.End();

  EXPECT_EQ(m_output.str(),
            "> new part\n== The end.\n(3 of 3 calls and events are not shown; --full shows all)\n");
}

TEST_F(FoldedSessionTest, ShowsAnExpectationThatFails) {
  Run(L"expect active bolt.sldprt");

  EXPECT_EQ(m_output.str(), "FAILED: demo.txt:12: expect active bolt.sldprt: no document is open\n");
}

TEST_F(FoldedSessionTest, SaysNothingAboutAJournalThatWasShownWhole) {
  Run(L"print Hello");
  m_session.End();

  EXPECT_EQ(m_output.str(), "== Hello\n");
}

}  // namespace
