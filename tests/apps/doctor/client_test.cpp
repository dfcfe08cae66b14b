// The PLM client at the other end of a real pipe.
#include <thread>

#include "CStringHelper.h"
#include "doctor_fixture.h"
#include "plm_client/client.h"
#include "plm_client/json_text.h"
#include "raw_server.h"

using doctor::Report;
using doctor::Status;
using plm_client::Client;
using plm_client::Reply;
using plm_client::Request;
using plm_client::Settings;

namespace {

class ClientCheck : public DoctorFixture {
 protected:
  /// Configures this test's pipe, and more members such as R"(,"client":"...")".
  void ConfigurePipe(const std::string& members = {}) const {
    Configure(L"PlmClient.json",
              "{\"pipe\":\"" + CStringHelper::UnicodeToUTF8(m_pipe) + "\"" + members + "}");
  }

  Client Serve(Settings settings = {}) const {
    ConfigurePipe();
    settings.pipe = m_pipe;
    return {settings, [](const Request&, std::stop_token) { return Reply::Text(""); }};
  }

  const std::wstring m_pipe = L"tavo-doctor-test-" + std::to_wstring(GetCurrentProcessId());
};

TEST_F(ClientCheck, GetsASignOfLifeFromAClientThatDoesNotKnowTheRequest) {
  const Client client = Serve();
  const Report report = Check("client");
  ExpectHealthy(report);
  ExpectFinding(report, "client.pipe", Status::kOk, L"The PLM client serves the pipe \\\\.\\pipe\\" + m_pipe);
  ExpectFinding(report, "client.owner", Status::kOk, L"The pipe belongs to this account");
  ExpectFinding(report, "client.answer", Status::kOk, L"The PLM client answered in ");
  EXPECT_TRUE(client.Requests().empty()) << "a command was sent";
}

TEST_F(ClientCheck, LooksForTheUsersPipeIfNoneIsConfigured) {
  ExpectFinding(Check("client"), "client.pipe", Status::kWarning,
                L"no program is configured for the add-in to start: there is no pipe \\\\.\\pipe\\" +
                    plm_client::DefaultPipeName());
}

TEST_F(ClientCheck, WarnsThatNobodyServesThePipe) {
  ConfigurePipe();
  ExpectFinding(Check("client"), "client.pipe", Status::kWarning, L"there is no pipe \\\\.\\pipe\\" + m_pipe);
}

TEST_F(ClientCheck, DoesNotStartTheProgram) {
  // It would write this file.
  const std::wstring program = m_folder.Write(L"client.exe", ReadFileBytes(DoctorPath()));
  ConfigurePipe(R"(,"client":)" + plm_client::JsonString(CStringHelper::UnicodeToUTF8(program)));
  const Report report = Check("client");
  ExpectHealthy(report);
  ExpectFinding(report, "client.program", Status::kOk, program + L". It was not started.");
  ExpectFinding(report, "client.pipe", Status::kOk, L"The add-in starts its program at the first command.");
  EXPECT_TRUE(DeleteFileW(program.c_str())) << "the program runs";
}

TEST_F(ClientCheck, FindsAProgramThatDoesNotExist) {
  ConfigurePipe(R"(,"client":"C:\\no such folder\\client.exe")");
  ExpectFinding(Check("client"), "client.program", Status::kFailed,
                L"The PLM client's program C:\\no such folder\\client.exe does not exist.");
}

TEST_F(ClientCheck, FindsAProgramWithoutAFullPath) {
  ConfigurePipe(R"(,"client":"client.exe")");
  ExpectFinding(Check("client"), "client.program", Status::kFailed, L"client.exe is not a full path.");
}

TEST_F(ClientCheck, TellsThatAPipeIsInUse) {
  const Client client = Serve({.instances = 1});
  const UniqueHandle other_host = OpenPipe(m_pipe);
  ASSERT_TRUE(other_host);
  const Report report = Check("client");
  ExpectHealthy(report);
  ExpectFinding(report, "client.pipe", Status::kOk, L"it is in use, so that it was asked nothing.");
}

TEST_F(ClientCheck, FindsAPipeOfAnotherUser) {
  const Client client = Serve({.security = L"O:BAD:P(A;;GA;;;WD)"});
  ExpectFinding(Check("client"), "client.owner", Status::kFailed,
                L"The add-in sends nothing to this pipe: the pipe belongs to another user.");
  EXPECT_TRUE(client.Requests().empty());
}

TEST_F(ClientCheck, FindsAClientThatDoesNotAnswer) {
  ConfigurePipe();
  const UniqueHandle end = OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  {
    const RawServer server(m_pipe, [&](HANDLE) { WaitForSingleObject(end.get(), 20'000); });
    m_patience = std::chrono::milliseconds(300);
    ExpectFinding(Check("client"), "client.answer", Status::kFailed, L"The PLM client did not answer: ");
    SetEvent(end.get());
  }
}

TEST_F(ClientCheck, FindsAClientThatClosesTheConnection) {
  ConfigurePipe();
  const RawServer server(m_pipe, [](HANDLE pipe) { ReadBytes(pipe, 30); });
  ExpectFinding(Check("client"), "client.answer", Status::kFailed, L"the client has closed the connection.");
}

TEST_F(ClientCheck, FindsAClientThatAnswersWithoutAFrame) {
  ConfigurePipe();
  const RawServer server(m_pipe, [](HANDLE pipe) {
    ReadBytes(pipe, 30);
    WriteAll(pipe, "{\"jsonrpc\":\"2.0\"}\r\n\r\n");
  });
  ExpectFinding(Check("client"), "client.answer", Status::kFailed,
                L"The PLM client did not answer: the client sent ");
}

TEST_F(ClientCheck, TakesAnyMessageAsASignOfLife) {
  ConfigurePipe();
  const RawServer server(m_pipe, [](HANDLE pipe) {
    ReadBytes(pipe, 30);
    WriteAll(pipe, "Content-Length: 4\r\n\r\nnull");
  });
  ExpectFinding(Check("client"), "client.answer", Status::kOk, L"The PLM client answered in ");
}

TEST_F(ClientCheck, FindsANameThatIsNoPipe) {
  Configure(L"PlmClient.json", R"({"pipe":"..\\NUL"})");
  ExpectFinding(Check("client"), "client.pipe", Status::kFailed, LR"(\\.\pipe\..\NUL is not a pipe.)");
}

}  // namespace
