// Scripts that are recorded in the window, and played again.
#include "console/script.h"
#include "console/session.h"
#include "window_fixture.h"

namespace {

class RecordingTest : public WindowTest {
 protected:
  Texts Lines() const {
    Texts lines;
    for (const cad_host::Command& command : cad_host::ReadScript(m_path)) lines.push_back(command.Text());
    return lines;
  }

  const std::wstring m_path = m_folder.Path(L"recorded script.txt");
};

TEST_F(RecordingTest, EveryActionBecomesALine) {
  Show();
  Actions().StartRecording(m_path);
  const std::wstring bolt = MakeModel(L"a bolt.sldprt");
  Do({L"new", L"assembly"});
  Do({L"insert", bolt, L"at", L"0.25", L"0", L"-1"});
  Do({L"select", L"component", L"a bolt-1", L"at", L"0.25", L"0", L"-1"});
  Do({L"suppress", L"a bolt-1"});
  Do({L"property", L"Name", L"=", L"a \"quoted\" word", L"text"});
  Do({L"remove", L"property", L"Name"});
  Actions().StopRecording();
  Do({L"new", L"part"});
  EXPECT_EQ(Lines(), (Texts{L"new assembly", L"insert \"" + bolt + L"\" at 0.25 0 -1",
                            L"select component \"a bolt-1\" at 0.25 0 -1", L"suppress \"a bolt-1\"",
                            L"property Name = \"a \"\"quoted\"\" word\" text", L"remove property Name"}));
}

TEST_F(RecordingTest, BeginsWithTheAddInsAndDocumentsThatAreThere) {
  ShowWithAddIn();
  const std::wstring bolt = MakeModel(L"bolt.sldprt");
  Do({L"open", bolt});
  Actions().StartRecording(m_path);
  EXPECT_EQ(Lines(), (Texts{std::wstring(L"connect \"") + kTitle + L"\"", L"open " + bolt}));
}

TEST_F(RecordingTest, AnActionThatFailsIsNotRecorded) {
  Show();
  Actions().StartRecording(m_path);
  EXPECT_THROW(Actions().Do({L"open", m_folder.Path(L"none.sldprt")}), cad_host::HostError);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(RecordingTest, TheRecordedScriptHasTheSameEffectsAgain) {
  Show();
  const std::wstring bolt = MakeModel(L"bolt.sldprt");
  const std::wstring top = m_folder.Path(L"top.sldasm");
  Actions().StartRecording(m_path);
  Do({L"connect", kTitle});
  Do({L"pick", L"Log In"});
  Do({L"new", L"assembly"});
  Do({L"insert", bolt, L"at", L"0.5", L"0", L"0"});
  Do({L"property", L"Number", L"=", L"M 12", L"number"});
  Do({L"save", top});
  Do({L"suppress", L"bolt-1"});
  Actions().StopRecording();
  const auto effects = [this] {
    const auto document = m_host->ActiveDocument();
    const cad_host::CustomProperty& property = document->model.properties.at(0);
    return document->path + L"|" + property.name + L"=" + property.text + L"|" +
           std::to_wstring(property.type) + L"|" +
           std::to_wstring(document->components.at(0)->IsSuppressed()) + L"|" +
           std::to_wstring(m_host->IsEnabled(*m_host->ConnectedAddIns().at(0), L"Log In"));
  };
  const std::wstring in_window = effects();
  EndSession();
  RestartHost();
  std::ostringstream transcript;
  cad_host::Session session(*m_host, transcript);
  for (cad_host::Command& command : cad_host::ReadScript(m_path)) session.Run(command);
  EXPECT_EQ(effects(), in_window);
  session.End();
  EXPECT_EQ(session.FailedExpectations(), 0) << transcript.str();
}

TEST_F(RecordingTest, TheAnswerOfAPersonStandsBeforeTheCommandThatAsked) {
  ShowWithAddIn();
  Actions().StartRecording(m_path);
  StopClient();
  constexpr UINT kLook = 200;  // milliseconds
  SetTimer(nullptr, 0, kLook, [](HWND, UINT, UINT_PTR timer, DWORD) {
    HWND box = FindWindowW(L"#32770", nullptr);
    if (!box) return;
    KillTimer(nullptr, timer);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  Do({L"pick", L"Log In"});  // says that the PLM client did not answer
  Actions().StopRecording();
  EXPECT_EQ(Lines(), (Texts{std::wstring(L"connect \"") + kTitle + L"\"", L"answer OK", L"pick \"Log In\""}));
}

TEST_F(RecordingTest, TheWindowPlaysAScriptLineByLine) {
  const std::wstring script =
      m_folder.WriteText(L"script.txt", L"new part\nproperty Name = 螺栓\nexpect property Name = 螺栓\n");
  cad_host::WindowOptions options;
  options.script = script;
  Show(options);
  const ULONGLONG end = GetTickCount64() + 10000;
  while (GetTickCount64() < end && m_transcript.str().find("> property") == std::string::npos) PassOn();
  for (int more = 0; more < 20; ++more) {
    PassOn();
    Sleep(20);
  }
  EXPECT_EQ(m_host->ActiveDocument()->model.properties.at(0).text, L"螺栓");
  EXPECT_EQ(Window().ExitCode(), 0);
}

}  // namespace
