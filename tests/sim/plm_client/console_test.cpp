#include <gtest/gtest.h>

#include "CStringHelper.h"
#include "client_program.h"
#include "host.h"
#include "temp_folder.h"

namespace {

/// plm_client.exe.
class Console : public ClientProgram {
 public:
  Console(const TempFolder& folder, const std::wstring& arguments)
      : ClientProgram(L"plm_client.exe", folder, arguments) {}
};

class ConsoleTest : public testing::Test {
 protected:
  /// Arguments for the folder "answers" and this test's pipe.
  std::wstring Arguments(const std::wstring& further = L"") const {
    return L"--answers \"" + m_folder.Path(L"answers") + L"\" --pipe " + m_pipe + L" " + further;
  }

  Host Connect() const { return ConnectWhenServed(m_pipe); }

  const std::wstring m_pipe = NewPipeName();
  TempFolder m_folder;
};

TEST_F(ConsoleTest, AnswersFromTheFolderPrintsRecordsAndEndsWhenIdle) {
  m_folder.Write(L"answers\\QD_PLMLogin.json", R"({"__InvokeResult__":true})");
  m_folder.Write(L"answers\\QD_PLMWf.json", "{\r\n  \"a\": 1,\n  \"b  c\": 2\n}\n");
  const Console console(m_folder,
                        Arguments(L"--until-idle 1 --record \"" + m_folder.Path(L"record.jsonl") + L"\""));
  {
    const Host host = Connect();
    EXPECT_EQ(host.Ask(1, "QD_PLMLogin"),
              R"({"jsonrpc":"2.0","id":1,"result":{"answer":"{\"__InvokeResult__\":true}"}})");
    EXPECT_EQ(host.Ask(2, "QD_PLMQuery", "{\"a\":1}"), R"({"jsonrpc":"2.0","id":2,"result":{"answer":""}})");
    Sleep(1'500);  // connected is not idle
    EXPECT_EQ(host.Ask(3, "QD_PLMLogin").find("error"), std::string::npos);
    EXPECT_EQ(host.Ask(4, "QD_PLMWf").find("error"), std::string::npos);
  }
  EXPECT_EQ(console.ExitCode(), 0u);
  const std::string login =
      "    PLM client asked: QD_PLMLogin with nothing\r\n"
      "    PLM client answers, from QD_PLMLogin.json: {\"__InvokeResult__\":true}\r\n";
  EXPECT_EQ(console.Output(), "serving \\\\.\\pipe\\" + CStringHelper::UnicodeToUTF8(m_pipe) + "\r\n" +
                                  login +
                                  "    PLM client asked: QD_PLMQuery with {\"a\":1}\r\n"
                                  "    PLM client answers: nothing\r\n" +
                                  login +
                                  "    PLM client asked: QD_PLMWf with nothing\r\n"
                                  "    PLM client answers, from QD_PLMWf.json: {\"a\": 1,\"b  c\": 2}\r\n");
  EXPECT_EQ(m_folder.Read(L"record.jsonl"),
            "{\"command\":\"QD_PLMLogin\",\"request\":\"\"}\n"
            "{\"command\":\"QD_PLMQuery\",\"request\":\"{\\\"a\\\":1}\"}\n"
            "{\"command\":\"QD_PLMLogin\",\"request\":\"\"}\n"
            "{\"command\":\"QD_PLMWf\",\"request\":\"\"}\n");
  EXPECT_EQ(console.Errors(), "");
}

TEST_F(ConsoleTest, GivesASecondSessionTheSameNumberedAnswers) {
  m_folder.Write(L"answers\\QD_PLMQuery.1.json", "first");
  m_folder.Write(L"answers\\QD_PLMQuery.2.json", "second");
  const Console console(m_folder, Arguments(L"--until-idle 1"));
  for (int session = 0; session < 2; ++session) {
    const Host host = Connect();
    EXPECT_EQ(host.Ask(1, "QD_PLMQuery"), R"({"jsonrpc":"2.0","id":1,"result":{"answer":"first"}})");
    EXPECT_EQ(host.Ask(2, "QD_PLMQuery"), R"({"jsonrpc":"2.0","id":2,"result":{"answer":"second"}})");
  }
  EXPECT_EQ(console.ExitCode(), 0u);
}

TEST_F(ConsoleTest, PrintsNothingWithTheOptionQuiet) {
  m_folder.MakeFolder(L"answers");
  const Console console(m_folder, Arguments(L"--until-idle 1 --quiet"));
  EXPECT_EQ(Connect().Ask(1, "QD_PLMQuery"), R"({"jsonrpc":"2.0","id":1,"result":{"answer":""}})");
  EXPECT_EQ(console.ExitCode(), 0u);
  EXPECT_EQ(console.Output(), "");
}

TEST_F(ConsoleTest, ReportsInvalidArguments) {
  m_folder.MakeFolder(L"answers");
  const std::pair<std::wstring, const char*> cases[] = {
      {L"", "--answers must name a folder"},
      {L"--answers \"" + m_folder.Path(L"missing") + L"\"", "--answers must name a folder"},
      {L"--answers", "--answers needs a value"},
      {Arguments(L"--until-idle soon"), "--until-idle takes a number of seconds, not soon"},
      {Arguments(L"--loud"), "no such option: --loud"},
      {Arguments(L"--record \"" + m_folder.Path(L"missing\\record") + L"\""), "cannot be written"},
  };
  for (const auto& [arguments, message] : cases) {
    const Console console(m_folder, arguments);
    EXPECT_EQ(console.ExitCode(), 2u) << message;
    EXPECT_NE(console.Errors().find(message), std::string::npos) << console.Errors();
  }
}

TEST_F(ConsoleTest, FailsIfAnotherClientServesThePipe) {
  m_folder.MakeFolder(L"answers");
  const Console first(m_folder, Arguments());
  Connect();
  const Console second(m_folder, Arguments());
  EXPECT_EQ(second.ExitCode(), 2u);
  EXPECT_NE(second.Errors().find("cannot be made"), std::string::npos) << second.Errors();
}

}  // namespace
