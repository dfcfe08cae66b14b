#include "pipe_owner.h"

#include <sddl.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "case_name.h"
#include "import_patch.h"
#include "invoker_fixture.h"
#include "raw_server.h"
#include "system_function.h"

namespace {

class Sid {
 public:
  explicit Sid(const wchar_t* text) { EXPECT_TRUE(ConvertStringSidToSidW(text, &m_sid)); }
  Sid(const Sid&) = delete;
  Sid& operator=(const Sid&) = delete;
  ~Sid() { LocalFree(m_sid); }
  PSID Get() const { return m_sid; }

 private:
  PSID m_sid = nullptr;
};

TEST(PipeOwner, IsTrustedIfItIsTheUserOrTheOwnerOfTheUsersNewObjects) {
  const Sid user(L"S-1-5-21-1-2-3-1000"), same(L"S-1-5-21-1-2-3-1000"), administrators(L"S-1-5-32-544"),
      stranger(L"S-1-5-21-1-2-3-1001"), everyone(L"S-1-1-0");
  EXPECT_TRUE(invoker::IsTrustedOwner(same.Get(), user.Get(), user.Get()));
  EXPECT_TRUE(invoker::IsTrustedOwner(administrators.Get(), user.Get(), administrators.Get()));
  EXPECT_TRUE(invoker::IsTrustedOwner(same.Get(), user.Get(), administrators.Get()));
  EXPECT_FALSE(invoker::IsTrustedOwner(stranger.Get(), user.Get(), user.Get()));
  EXPECT_FALSE(invoker::IsTrustedOwner(administrators.Get(), user.Get(), user.Get()));
  EXPECT_FALSE(invoker::IsTrustedOwner(everyone.Get(), user.Get(), administrators.Get()));
  EXPECT_TRUE(invoker::IsTrustedOwner(nullptr, user.Get(), user.Get()));
}

struct OtherOwner {
  const char* name;
  const wchar_t* security;
};

void PrintTo(const OtherOwner& owner, std::ostream* stream) { *stream << owner.name; }

class PipeOfAnotherUser : public InvokerFixture, public testing::WithParamInterface<OtherOwner> {};

TEST_P(PipeOfAnotherUser, GetsNoRequestAndNoClientIsStarted) {
  StartClient(plm_client::Settings{.security = GetParam().security});
  ConfigurePipe(R"(,"client":"C:\\no such program.exe")");
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  ExpectOneLine(L"QD_PLMLogin", L"the pipe belongs to another user");
  EXPECT_TRUE(m_client->Requests().empty());
}

const OtherOwner kOtherOwners[] = {{"Administrators", L"O:BAD:P(A;;GA;;;WD)"},
                                   {"Everyone", L"O:WDD:P(A;;GA;;;WD)"},
                                   {"TheSystem", L"O:SYD:P(A;;GA;;;WD)"},
                                   {"AnotherPerson", L"O:S-1-5-21-1-2-3-1001D:P(A;;GA;;;WD)"}};
INSTANTIATE_TEST_SUITE_P(, PipeOfAnotherUser, testing::ValuesIn(kOtherOwners), CaseName<OtherOwner>);

class PipeOfThisUser : public InvokerFixture {};

TEST_F(PipeOfThisUser, IsUsedEvenWithoutASecurityDescriptor) {
  ConfigurePipe();
  const std::string content = R"({"jsonrpc":"2.0","id":1,"result":{"answer":"x"}})";
  const RawServer server(m_pipe, [&](HANDLE connection) {
    ReadBytes(connection, 50);
    WriteAll(connection, "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content);
  });
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"x");
}

/// For the life of the object, the system reports that the server of each pipe is in this terminal session.
class SessionOfServer {
 public:
  /// @param session nothing if the system does not know it.
  explicit SessionOfServer(std::optional<ULONG> session) { reported = session; }

 private:
  static BOOL WINAPI Report(HANDLE, ULONG* session) {
    if (reported) *session = *reported;
    return reported.has_value();
  }

  static inline std::optional<ULONG> reported;
  const ImportPatch m_patch{GetModuleHandleW(nullptr), "GetNamedPipeServerSessionId", &Report};
};

TEST_F(PipeOfThisUser, GetsNoRequestIfItsServerIsInAnotherTerminalSession) {
  DWORD own = 0;
  ASSERT_TRUE(ProcessIdToSessionId(GetCurrentProcessId(), &own));
  StartClient();
  ConfigurePipe(R"(,"client":"C:\\no such program.exe")");
  const SessionOfServer other(own + 1);
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  ExpectOneLine(L"QD_PLMLogin", L"the pipe is served in another terminal session");
  EXPECT_TRUE(m_client->Requests().empty());
}

TEST_F(PipeOfThisUser, IsUsedIfItsServerIsInThisSessionOrTheSystemDoesNotKnow) {
  DWORD own = 0;
  ASSERT_TRUE(ProcessIdToSessionId(GetCurrentProcessId(), &own));
  StartClient();
  m_script.Always("QD_PLMLogin", plm_client::Reply::Text("x"));
  for (const std::optional<ULONG> session : {std::optional<ULONG>(own), std::optional<ULONG>()}) {
    const SessionOfServer reported(session);
    m_client->Disconnect();
    AwaitOpenConnections(0);
    EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"x");
  }
}

/// Records the flags with which this program opens pipes, for the life of the object.
class PipeOpenings {
 public:
  PipeOpenings() { flags_of_openings.clear(); }

  const std::vector<DWORD>& Flags() const { return flags_of_openings; }

 private:
  static HANDLE WINAPI Record(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                              DWORD disposition, DWORD flags, HANDLE model) {
    if (std::wstring_view(path).starts_with(LR"(\\.\pipe\)")) flags_of_openings.push_back(flags);
    return kCreateFile(path, access, share, security, disposition, flags, model);
  }

  static inline const auto kCreateFile =
      SystemFunction<decltype(CreateFileW)>(L"kernel32.dll", "CreateFileW");
  static inline std::vector<DWORD> flags_of_openings;
  const ImportPatch m_patch{GetModuleHandleW(nullptr), "CreateFileW", &Record};
};

TEST_F(PipeOfThisUser, MayIdentifyThisProcessButNotImpersonateIt) {
  // Checks the flags of the call, because some systems allow every pipe to impersonate.
  StartClient();
  m_script.Always("QD_PLMLogin", plm_client::Reply::Text("x"));
  const PipeOpenings openings;
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"x");
  ASSERT_EQ(openings.Flags().size(), 1u);
  EXPECT_EQ(openings.Flags()[0] & SECURITY_VALID_SQOS_FLAGS, SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION);
}

}  // namespace
