#include <gtest/gtest.h>

#include "CStringHelper.h"
#include "client_program.h"
#include "host.h"
#include "vault/vault.h"

namespace {

class WindowProgramTest : public testing::Test {
 protected:
  WindowProgramTest() {
    m_vault.AddUser({L"kim", L"Kim"});
    m_vault.Import(m_folder.Write(L"bolt.sldprt", "content"), L"kim", {}, {});
  }

  std::wstring Arguments(const std::wstring& further) const {
    return L"--vault \"" + m_folder.Path(L"vault") + L"\" --pipe " + m_pipe +
           L" --step-ms 10 --until-idle 2 " + further;
  }

  std::wstring Person(const std::string& script) const {
    return L"--person \"" + m_folder.Write(L"day.txt", script) + L"\" ";
  }

  /// The content of an answer with this text.
  static bool Contains(const std::string& content, const std::string& part) {
    return content.find(part) != std::string::npos;
  }

  TempFolder m_folder;
  plm_vault::Vault m_vault = plm_vault::Vault::Create(m_folder.Path(L"vault"));
  const std::wstring m_pipe = NewPipeName();
};

class Window : public ClientProgram {
 public:
  Window(const TempFolder& folder, const std::wstring& arguments)
      : ClientProgram(L"plm_client_window.exe", folder, arguments) {}
};

TEST_F(WindowProgramTest, AnswersWhatThePersonChoosesAndEndsWhenIdle) {
  const Window program(m_folder, Arguments(Person("QD_PLMLogin log-in\n"
                                                  "QD_PLMDataSelector check-out open \"bolt.sldprt\"\n"
                                                  "QD_PLMQuery cancel\n")));
  {
    const Host host = ConnectWhenServed(m_pipe);
    EXPECT_TRUE(Contains(host.Ask(1, "QD_PLMLogin"), R"(\"user\": \"kim\")"));
    EXPECT_TRUE(Contains(host.Ask(2, "QD_PLMDataSelector"), R"(bolt.sldprt\")"));
    EXPECT_EQ(host.Ask(3, "QD_PLMQuery"), R"({"jsonrpc":"2.0","id":3,"result":{"answer":""}})");
  }
  EXPECT_EQ(program.ExitCode(), 0u);
  EXPECT_EQ(m_vault.Find(L"P-00001").checked_out_by, L"kim") << "the effect lasts";
}

TEST_F(WindowProgramTest, AnswersSeveralHostsSideBySide) {
  const Window program(m_folder, Arguments(Person("A cancel")));
  const Host first = ConnectWhenServed(m_pipe), second = ConnectWhenServed(m_pipe);
  first.Send(
      Frame(R"({"jsonrpc":"2.0","id":1,"method":"invoke","params":{"command":"QD_PLMQuery","request":""}})"));
  EXPECT_TRUE(Contains(second.Ask(2, "A"), R"("answer":"")")) << "while the panel of the first is open";
}

TEST_F(WindowProgramTest, GoesOnWhenAHostGivesUpWaiting) {
  const Window program(m_folder, Arguments(Person("A cancel")));
  {
    const Host host = ConnectWhenServed(m_pipe);
    host.Send(Frame(
        R"({"jsonrpc":"2.0","id":1,"method":"invoke","params":{"command":"QD_PLMQuery","request":""}})"));
    Sleep(300);
  }
  EXPECT_TRUE(Contains(ConnectWhenServed(m_pipe).Ask(2, "A"), R"("answer":"")"));
  EXPECT_EQ(program.ExitCode(), 0u);
}

TEST_F(WindowProgramTest, AnswersFromAFolderWhatHasAFileThere) {
  m_folder.Write(L"answers\\A.json", R"({"from":"a file"})");
  const Window program(m_folder,
                       Arguments(L"--answers \"" + m_folder.Path(L"answers") + L"\" " + Person("B cancel")));
  const Host host = ConnectWhenServed(m_pipe);
  EXPECT_TRUE(Contains(host.Ask(1, "A"), "a file"));
  EXPECT_TRUE(Contains(host.Ask(2, "B"), R"("answer":"")"));
}

TEST_F(WindowProgramTest, MisbehavesWhenItIsTold) {
  const std::pair<const wchar_t*, std::string> cases[] = {
      {L"garbage", "\xFF no JSON at all {{{"}, {L"half-frame", "closed"}, {L"die", "closed"}};
  for (const auto& [fault, content] : cases) {
    const Window program(m_folder, Arguments(Person("A cancel") + L" --misbehave " + fault));
    const Host host = ConnectWhenServed(m_pipe);
    const std::string received = host.Ask(1, "A");
    if (content == "closed") {
      EXPECT_EQ(received.find("\"result\":{\"answer\":\"\"}"), std::string::npos) << received;
      EXPECT_EQ(host.ReceiveContent(), "closed");
    } else {
      EXPECT_EQ(received, content);
    }
    if (std::wstring(fault) == L"die") {
      EXPECT_EQ(program.ExitCode(), 3u);
    }
  }
}

TEST_F(WindowProgramTest, MakesASampleVault) {
  const Window program(m_folder, L"--make-sample \"" + m_folder.Path(L"\u56fe\u7eb8\u5e93") + L"\"");
  EXPECT_EQ(program.ExitCode(), 0u) << program.Errors();
  EXPECT_GE(plm_vault::Vault::Open(m_folder.Path(L"\u56fe\u7eb8\u5e93")).Search({}).size(), 30u);
}

TEST_F(WindowProgramTest, NamesWhatItCannotUse) {
  const std::pair<std::wstring, const char*> cases[] = {
      {L"--loud", "no such option: --loud"},
      {L"--vault C:\\no\\such\\vault", "C:\\no\\such\\vault is no vault"},
      {Arguments(L"--person C:\\no\\day.txt"), "C:\\no\\day.txt cannot be read"},
  };
  for (const auto& [arguments, message] : cases) {
    const Window program(m_folder, arguments);
    EXPECT_EQ(program.ExitCode(), 2u);
    EXPECT_TRUE(Contains(program.Errors(), message)) << program.Errors();
  }
}

TEST_F(WindowProgramTest, FailsIfAnotherClientServesThePipe) {
  const Window first(m_folder, Arguments(L"--until-idle 20"));
  const Host host = ConnectWhenServed(m_pipe);
  const Window second(m_folder, Arguments(L""));
  EXPECT_EQ(second.ExitCode(), 2u);
  EXPECT_TRUE(Contains(second.Errors(), "cannot be made")) << second.Errors();
}

}  // namespace
