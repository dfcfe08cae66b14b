// Session scripts: commands, journal and expectations.
#include "console/session.h"

#include <functional>
#include <sstream>
#include <stdexcept>

#include "CStringHelper.h"
#include "CZALException.h"
#include "case_name.h"
#include "com/registered_add_in.h"
#include "com/test_add_in.h"
#include "host/command_manager.h"
#include "host_fixture.h"

namespace {

using cad_host::Command;
using cad_host::HostError;

constexpr const wchar_t* kTitle = L"Session test add-in";

/// A session with an add-in of one item, "Item", that runs `m_onRun`.
class SessionTest : public HostTest {
 protected:
  SessionTest() : m_registered(kTitle, &m_addIn), m_session(Host(), m_output) {
    m_addIn.on_connect = [this](IDispatch* host, long cookie, VARIANT_BOOL*) {
      const ISldWorksPtr application = ApplicationOf(host);
      VARIANT_BOOL flag = VARIANT_FALSE;
      application->SetAddinCallbackInfo(0, static_cast<IDispatch*>(&m_addIn), cookie, &flag);
      return MakeItem(application, cookie);
    };
    m_addIn.methods[L"Run"] = [this](DISPPARAMS&, VARIANT*, EXCEPINFO*) {
      m_onRun();
      return S_OK;
    };
    m_addIn.methods[L"MayRun"] = [this](DISPPARAMS& arguments, VARIANT*, EXCEPINFO*) {
      *arguments.rgvarg[0].plVal = m_enabled;
      return S_OK;
    };
  }

  static HRESULT MakeItem(const ISldWorksPtr& application, long cookie) {
    ICommandManagerPtr manager;
    application->GetCommandManager(cookie, &manager);
    ICommandGroupPtr group;
    long number = 0;
    manager->CreateCommandGroup2(0, CComBSTR(L"Group"), CComBSTR(L""), CComBSTR(L""), -1, VARIANT_FALSE,
                                 &number, &group);
    return group->AddCommandItem(CComBSTR(L"Item"), -1, CComBSTR(L""), CComBSTR(L""), 0, CComBSTR(L"Run"),
                                 CComBSTR(L"MayRun"), 0, &number);
  }

  void Run(const std::wstring& line) {
    Command command(L"demo.txt", 12, line);
    m_session.Run(command);
  }

  /// @return the message of the error that `line` causes.
  std::wstring ErrorOf(const std::wstring& line) {
    try {
      Run(line);
    } catch (const HostError& error) {
      return error.Message();
    }
    return L"no error";
  }

  bool Shows(const std::wstring& text) const {
    return m_output.str().find(CStringHelper::UnicodeToUTF8(text)) != std::string::npos;
  }

  std::function<void()> m_onRun = [] {};
  long m_enabled = 1;
  TestAddIn m_addIn;
  RegisteredAddIn m_registered;
  std::ostringstream m_output;
  cad_host::Session m_session;
};

TEST_F(SessionTest, WritesTheCommandAndTheJournal) {
  Run(L"new part");
  EXPECT_EQ(m_output.str(),
            "> new part\n"
            "    event FileNewNotify2(part \"Part1\", 1, \"\")\n"
            "    event ActiveDocChangeNotify()\n"
            "    event ActiveModelDocChangeNotify()\n");
}

TEST_F(SessionTest, ConnectsPicksAndDisconnects) {
  int runs = 0;
  m_onRun = [&] { ++runs; };
  Run(std::wstring(L"connect \"") + kTitle + L"\"");
  Run(L"pick Item");
  Run(L"pick Run");
  Run(L"disconnect");
  EXPECT_EQ(runs, 2);
  EXPECT_TRUE(Shows(L"-> ISwAddin::ConnectToSW(1) = S_OK, true"));
  EXPECT_TRUE(Shows(L"      ICommandGroup::AddCommandItem(\"Item\""));
  EXPECT_TRUE(Shows(L"-> Run() = S_OK"));
}

TEST_F(SessionTest, ReportsAnItemThatIsGreyedOut) {
  m_enabled = 0;
  Run(L"connect \"" + std::wstring(kTitle) + L"\"");
  Run(L"pick Item");
  EXPECT_TRUE(Shows(L"(greyed out)"));
  Run(L"expect disabled Item");
  EXPECT_EQ(m_session.FailedExpectations(), 0);
  Run(L"expect enabled Item");
  EXPECT_EQ(m_session.FailedExpectations(), 1);
  EXPECT_TRUE(Shows(L"FAILED: demo.txt:12: expect enabled Item: it is greyed out"));
  m_session.End();
}

TEST_F(SessionTest, AnswersMessageBoxesInTheOrderOfTheAnswers) {
  std::vector<int> answers;
  m_onRun = [&] {
    answers.push_back(MessageBoxW(nullptr, L"Done?", L"First", MB_YESNO));
    answers.push_back(MessageBoxW(nullptr, L"Sure?", L"Second", MB_OKCANCEL));
  };
  Run(L"connect \"" + std::wstring(kTitle) + L"\"");
  Run(L"answer No");
  Run(L"answer OK");
  Run(L"pick Item");
  EXPECT_EQ(answers, (std::vector<int>{IDNO, IDOK}));
  EXPECT_TRUE(Shows(L"note: message box \"First\": \"Done?\", answered No"));
  EXPECT_TRUE(Shows(L"note: message box \"Second\": \"Sure?\", answered OK"));
  m_session.End();
  EXPECT_EQ(m_session.FailedExpectations(), 0);
}

TEST_F(SessionTest, AMessageBoxWithoutAnAnswerStaysForThePerson) {
  int answer = 0;
  m_onRun = [&] {
    // The person presses Escape after a while.
    constexpr UINT kWhile = 300;  // milliseconds
    SetTimer(nullptr, 0, kWhile, [](HWND, UINT, UINT_PTR timer, DWORD) {
      KillTimer(nullptr, timer);
      PostMessageW(FindWindowW(L"#32770", L"A box"), WM_COMMAND, IDCANCEL, 0);
    });
    answer = MessageBoxW(nullptr, L"Stays", L"A box", MB_OKCANCEL);
  };
  Run(L"connect \"" + std::wstring(kTitle) + L"\"");
  Run(L"pick Item");
  EXPECT_EQ(answer, IDCANCEL);
  EXPECT_TRUE(Shows(L"note: message box \"A box\": \"Stays\", left to the person"));
  m_session.End();
}

TEST_F(SessionTest, WorksOnDocumentsComponentsAndProperties) {
  const std::wstring bolt = MakePart(L"bolt.sldprt", 7);
  const std::wstring top = m_folder.Path(L"top assembly.sldasm");
  for (const std::wstring& line :
       {std::wstring(L"new assembly"), L"insert " + bolt + L" at 1 2.5 -3",
        std::wstring(L"property Name = \"a b\""), L"save \"" + top + L"\"",
        std::wstring(L"select component bolt-1 at 0.5 0 0"), L"open " + bolt, L"expect active " + bolt,
        L"activate \"" + top + L"\"", L"expect active \"" + top + L"\"",
        std::wstring(L"expect component bolt-1 revision 7"), std::wstring(L"expect property Name = \"a b\""),
        std::wstring(L"expect journal DocumentLoadNotify"),
        std::wstring(L"expect no journal FileCloseNotify"), std::wstring(L"properties"),
        std::wstring(L"components"), std::wstring(L"close bolt.sldprt")}) {
    EXPECT_EQ(ErrorOf(line), L"no error") << testing::PrintToString(line);
  }
  EXPECT_EQ(m_session.FailedExpectations(), 0) << m_output.str();
  EXPECT_EQ(Host().ActiveDocument()->path, top);
  EXPECT_EQ(Host().ActiveDocument()->components[0]->record.position.z, -3);
  EXPECT_EQ(Host().ActiveDocument()->selection[0].point.x, 0.5);
  EXPECT_TRUE(Shows(L"    Name = a b"));
  EXPECT_TRUE(Shows(L"    bolt-1 " + bolt + L" revision 7"));
}

TEST_F(SessionTest, SuppressesAndUnsuppressesAComponent) {
  Run(L"new assembly");
  Run(L"insert " + MakePart(L"bolt.sldprt", 7));
  Run(L"suppress bolt-1");
  EXPECT_TRUE(Host().ActiveDocument()->components[0]->IsSuppressed());
  MakePart(L"bolt.sldprt", 8);  // the file of a suppressed component is not held
  Run(L"unsuppress bolt-1");
  EXPECT_EQ(Host().ActiveDocument()->components[0]->loaded_revision, 8);
}

TEST_F(SessionTest, RemovesAProperty) {
  Run(L"new part");
  Run(L"property Name = bolt");
  Run(L"property Number = 7");
  Run(L"remove property Name");
  ASSERT_EQ(Host().ActiveDocument()->model.properties.size(), 1u);
  EXPECT_EQ(Host().ActiveDocument()->model.properties[0].name, L"Number");
}

TEST_F(SessionTest, PicksAndDisconnectsTheAddInThatIsNamed) {
  int runs = 0;
  m_onRun = [&] { ++runs; };
  Run(L"connect \"" + std::wstring(kTitle) + L"\"");
  TestAddIn other;
  other.on_connect = [](IDispatch*, long, VARIANT_BOOL*) { return S_OK; };
  Host().Connect(&other, L"Other");
  Run(std::wstring(L"pick Item of \"") + kTitle + L"\"");
  EXPECT_EQ(runs, 1);
  Run(std::wstring(L"disconnect \"") + kTitle + L"\"");
  ASSERT_EQ(Host().ConnectedAddIns().size(), 1u);
  EXPECT_EQ(Host().ConnectedAddIns()[0]->entry.title, L"Other");
  m_session.End();
}

TEST_F(SessionTest, AMessageBoxOutsideOfACommandGetsNoAnswer) {
  Run(L"answer Retry");
  constexpr UINT kWhile = 300;  // milliseconds
  SetTimer(nullptr, 0, kWhile, [](HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    PostMessageW(FindWindowW(L"#32770", L"Of the host"), WM_COMMAND, IDCANCEL, 0);
  });
  EXPECT_EQ(MessageBoxW(nullptr, L"?", L"Of the host", MB_RETRYCANCEL), IDCANCEL);
  m_session.End();
  EXPECT_TRUE(Shows(L"FAILED: 1 answers that no message box asked for"));
}

TEST_F(SessionTest, TakesPathsRelativeToTheCurrentFolder) {
  wchar_t before[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, before);
  m_folder.MakeFolder(L"parts");
  MakePart(L"parts\\bolt.sldprt");
  SetCurrentDirectoryW(m_folder.Path().c_str());
  Run(L"open parts\\bolt.sldprt");
  Run(L"expect active parts\\bolt.sldprt");
  SetCurrentDirectoryW(before);
  EXPECT_EQ(m_session.FailedExpectations(), 0) << m_output.str();
}

struct FailingExpectation {
  const char* name;
  const wchar_t* line;
  const wchar_t* reason;
};

class FailingExpectationTest : public SessionTest, public testing::WithParamInterface<FailingExpectation> {};

TEST_P(FailingExpectationTest, IsCountedAndWrittenWithTheReason) {
  Run(L"new part");
  Run(L"property Name = bolt");
  Run(GetParam().line);
  EXPECT_EQ(m_session.FailedExpectations(), 1);
  EXPECT_TRUE(Shows(std::wstring(L"FAILED: demo.txt:12: ") + GetParam().line + L": " + GetParam().reason));
}

const FailingExpectation kFailingExpectations[] = {
    {"NothingActive", L"expect active nothing", L"Part1 is active"},
    {"OtherDocumentActive", L"expect active Part2", L"Part1 is active"},
    {"Journal", L"expect journal ConnectToSW", L"no line contains it"},
    {"NoJournal", L"expect no journal FileNewNotify2", L"a line contains it"},
    {"PropertyText", L"expect property Name = nut", L"it is \"bolt\""},
    {"MissingProperty", L"expect property Other = nut", L"there is no such property"},
    {"MissingComponent", L"expect component bolt-1 suppressed", L"there is no such component"},
};

INSTANTIATE_TEST_SUITE_P(, FailingExpectationTest, testing::ValuesIn(kFailingExpectations),
                         CaseName<FailingExpectation>);

struct BadLine {
  const char* name;
  const wchar_t* line;
  const wchar_t* error;
};

class BadLineTest : public SessionTest, public testing::WithParamInterface<BadLine> {};

TEST_P(BadLineTest, FailsWithFileLineAndReason) {
  EXPECT_EQ(ErrorOf(GetParam().line), std::wstring(L"demo.txt:12: ") + GetParam().error);
}

const BadLine kBadLines[] = {
    {"UnknownCommand", L"frobnicate", L"unknown command \"frobnicate\""},
    {"UnknownQuirk", L"quirk tabs off",
     L"no quirk \"tabs\"; there are caller-arrays, enable-argument, equal-tab-names, false-tab-removal, "
     L"held-files, same-name-refused, silent-open-failure"},
    {"UnknownStateOfAQuirk", L"quirk held-files of", L"\"of\" is neither on nor off"},
    {"MissingStateOfAQuirk", L"quirk held-files", L"on or off is missing"},
    {"UnknownExpectation", L"expect miracles", L"unknown command \"miracles\""},
    {"MissingWord", L"open", L"a path is missing"},
    {"ExtraWord", L"open a b", L"\"b\" is one word too many"},
    {"UnclosedQuote", L"open \"a b", L"a quote that does not end"},
    {"UnknownType", L"new table", L"\"table\" is not a type"},
    {"UnknownButton", L"answer Perhaps", L"\"Perhaps\" is not a button of a message box"},
    {"NoAddIn", L"pick Item", L"no add-in is connected"},
    {"NoSuchAddIn", L"disconnect Other", L"no add-in \"Other\" is connected"},
    {"NoDocument", L"save", L"no document is open"},
    {"RemoveNothing", L"remove Name", L"no document is open"},
    {"UnknownDocument", L"close top", L"no open document \"top\""},
    {"MissingFile", L"open Z:\\none.sldprt", L"Z:\\none.sldprt: no such file"},
    {"FailTooLargeCallNumber", L"fault fail the 99999999999 OpenDoc6 with 80004005",
     L"\"99999999999\" is not the number of a call; use 1 to 999999999"},
    {"ReturnTooLargeCallNumber", L"fault the 99999999999th OpenDoc6 returns nothing",
     L"\"99999999999\" is not the number of a call; use 1 to 999999999"},
    {"InfiniteNumber", L"insert bolt.sldprt at 1e999 0 0", L"\"1e999\" is not a number for x"},
    {"NotANumber", L"insert bolt.sldprt at 0 nan 0", L"\"nan\" is not a number for y"},
    {"NumberWithUnit", L"insert bolt.sldprt at 0 0 1mm", L"\"1mm\" is not a number for z"},
    {"TooLargeRevision", L"expect component bolt-1 revision 99999999999",
     L"\"99999999999\" is not a whole number for a revision"},
    {"FractionalRevision", L"expect component bolt-1 revision 1.5",
     L"\"1.5\" is not a whole number for a revision"},
};

INSTANTIATE_TEST_SUITE_P(, BadLineTest, testing::ValuesIn(kBadLines), CaseName<BadLine>);

TEST_F(SessionTest, SwitchesQuirksByNameAndListsThem) {
  Run(L"quirk held-files off");
  EXPECT_FALSE(Host().GetQuirks().IsOn(cad_host::Quirk::kHeldFiles));
  Run(L"quirks");
  EXPECT_TRUE(Shows(L"    held-files off\n    same-name-refused on\n"));
  Run(L"quirk held-files on");
  EXPECT_TRUE(Host().GetQuirks().IsOn(cad_host::Quirk::kHeldFiles));
}

struct Exception {
  const char* name;
  void (*throws)();
  const wchar_t* text;
};

class ExceptionTest : public SessionTest, public testing::WithParamInterface<Exception> {};

TEST_P(ExceptionTest, FailsTheCommandWithFileAndLine) {
  m_onRun = GetParam().throws;
  Run(L"connect \"" + std::wstring(kTitle) + L"\"");
  EXPECT_EQ(ErrorOf(L"pick Item"), std::wstring(L"demo.txt:12: ") + GetParam().text);
  EXPECT_TRUE(Shows(L"-> Run()")) << "the journal up to the exception";
  m_session.End();
}

const Exception kExceptions[] = {
    {"HostError", [] { throw HostError(L"no 螺栓"); }, L"no 螺栓"},
    {"ExceptionOfTheAddIn", [] { throw CZALException(E_FAIL, L"坏"); },
     L"left by an exception: 坏 (0x80004005)"},
    {"ComError", [] { throw _com_error(E_ABORT); }, L"left by a COM error: 0x80004004"},
    {"StandardException", [] { throw std::out_of_range("stoi"); }, L"left by an exception: stoi"},
    {"UnknownException", [] { throw 1; }, L"left by an exception of an unknown kind"},
};

INSTANTIATE_TEST_SUITE_P(, ExceptionTest, testing::ValuesIn(kExceptions), CaseName<Exception>);

TEST_F(SessionTest, TheEndCountsUnreleasedObjectsAndUnusedFaultsAndAnswers) {
  IDispatchPtr kept;
  m_onRun = [&] { Host().Application()->ActivateDoc(CComBSTR(L"Part1"), &kept); };
  Run(L"new part");
  Run(L"connect \"" + std::wstring(kTitle) + L"\"");
  Run(L"pick Item");
  Run(L"fault fail the 3rd OpenDoc6 with 80004005");
  Run(L"answer OK");
  m_session.End();
  EXPECT_EQ(m_session.FailedExpectations(), 3);
  EXPECT_TRUE(Shows(L"FAILED: still held from outside: part \"Part1\", 1 times"));
  EXPECT_TRUE(Shows(L"FAILED: a fault never happened: call 3 of OpenDoc6"));
  EXPECT_TRUE(Shows(L"FAILED: 1 answers that no message box asked for"));
  EXPECT_TRUE(Host().ConnectedAddIns().empty());
  Host().GetFaults().Clear();
}

}  // namespace
