#include "pipe_owner.h"

#include <aclapi.h>
#include <sddl.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "base/local_memory.h"
#include "base/unique_handle.h"
#include "case_name.h"
#include "import_patch.h"
#include "invoker_fixture.h"
#include "no_answer.h"
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
  EXPECT_FALSE(invoker::IsTrustedOwner(nullptr, user.Get(), user.Get()));
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

/// Whether a new pipe of this process without a security descriptor has an owner on this system.
bool NewPipesHaveAnOwner() {
  HANDLE read = nullptr, write = nullptr;
  PSID owner = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  EXPECT_TRUE(CreatePipe(&read, &write, nullptr, 0));
  const UniqueHandle reading(read), writing(write);
  EXPECT_EQ(GetSecurityInfo(read, SE_KERNEL_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr,
                            nullptr, &descriptor),
            static_cast<DWORD>(ERROR_SUCCESS));
  const LocalMemory<void> owned(descriptor);
  return owner != nullptr;
}

TEST_F(PipeOfThisUser, IsUsedEvenWithoutASecurityDescriptor) {
  // Whether this pipe has an owner depends on the system: Wine gives it none. See PipeWithoutAnOwner.
  ConfigurePipe();
  const std::string content = R"({"jsonrpc":"2.0","id":1,"result":{"answer":"x"}})";
  const RawServer server(m_pipe, [&](HANDLE connection) {
    ReadBytes(connection, 50);
    WriteAll(connection, "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content);
  });
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"x");
}

using CreatePipeFunction = decltype(CreatePipe);

const auto kCreatePipe = SystemFunction<CreatePipeFunction>(L"kernel32.dll", "CreatePipe");

BOOL WINAPI CreateWithOwner(HANDLE* read, HANDLE* write, SECURITY_ATTRIBUTES*, DWORD size) {
  SECURITY_DESCRIPTOR descriptor;
  InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
  SECURITY_ATTRIBUTES attributes{sizeof(attributes), &descriptor, FALSE};
  return kCreatePipe(read, write, &attributes, size);
}

BOOL WINAPI CreateWithoutTheRightToReadTheOwner(HANDLE* read, HANDLE* write, SECURITY_ATTRIBUTES* attributes,
                                                DWORD size) {
  HANDLE process = GetCurrentProcess();
  HANDLE created = nullptr;
  return kCreatePipe(&created, write, attributes, size) &&
         DuplicateHandle(process, created, process, read, SYNCHRONIZE, FALSE, DUPLICATE_CLOSE_SOURCE);
}

BOOL WINAPI Fail(HANDLE*, HANDLE*, SECURITY_ATTRIBUTES*, DWORD) {
  SetLastError(ERROR_NO_SYSTEM_RESOURCES);
  return FALSE;
}

/// A system that does not say that its new pipes have no owner.
struct NewPipes {
  const char* name;
  CreatePipeFunction* create;
};

void PrintTo(const NewPipes& pipes, std::ostream* stream) { *stream << pipes.name; }

class PipeWithoutAnOwner : public InvokerFixture, public testing::WithParamInterface<NewPipes> {};

TEST_P(PipeWithoutAnOwner, GetsNoRequestUnlessNewPipesHaveNoOwnerEither) {
  ASSERT_FALSE(NewPipesHaveAnOwner()) << "needs a system whose pipes can be without an owner, such as Wine";
  ConfigurePipe(R"(,"client":"C:\\no such program.exe")");
  std::string received;
  {
    const RawServer server(m_pipe, [&](HANDLE connection) { received = ReadBytes(connection, 1); });
    const ImportPatch patch(GetModuleHandleW(nullptr), "CreatePipe", GetParam().create);
    EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  }
  ExpectOneLine(L"QD_PLMLogin", L"the pipe has no owner");
  EXPECT_EQ(received, "");
}

const NewPipes kNewPipes[] = {{"NewPipesHaveAnOwner", &CreateWithOwner},
                              {"TheirOwnerIsNotReported", &CreateWithoutTheRightToReadTheOwner},
                              {"NoPipeCanBeMade", &Fail}};
INSTANTIATE_TEST_SUITE_P(, PipeWithoutAnOwner, testing::ValuesIn(kNewPipes), CaseName<NewPipes>);

TEST_F(PipeOfThisUser, IsRefusedIfTheSystemDoesNotReportItsOwner) {
  // given an end of a pipe without the right to read its owner
  HANDLE read = nullptr, write = nullptr;
  ASSERT_TRUE(CreateWithoutTheRightToReadTheOwner(&read, &write, nullptr, 0));
  const UniqueHandle reading(read), writing(write);

  try {
    invoker::CheckPipeOwner(read);
    ADD_FAILURE() << "the pipe was accepted";
  } catch (const invoker::NoAnswer& refusal) {
    EXPECT_TRUE(refusal.reason.starts_with(L"the owner of the pipe cannot be determined: "));
  }
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
