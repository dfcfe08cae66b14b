#include "PipeOwner.h"

#include <sddl.h>

#include <memory>

#include "case_name.h"
#include "invoker_test.h"
#include "raw_server.h"

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

TEST(PipeOwner, IsTheUserOrTheOwnerOfItsNewObjects) {
  const Sid user(L"S-1-5-21-1-2-3-1000"), same(L"S-1-5-21-1-2-3-1000"), administrators(L"S-1-5-32-544"),
      stranger(L"S-1-5-21-1-2-3-1001"), everyone(L"S-1-1-0");
  EXPECT_TRUE(invoker::IsTrustedOwner(same.Get(), user.Get(), user.Get()));
  EXPECT_TRUE(invoker::IsTrustedOwner(administrators.Get(), user.Get(), administrators.Get()));
  EXPECT_TRUE(invoker::IsTrustedOwner(same.Get(), user.Get(), administrators.Get()));
  EXPECT_FALSE(invoker::IsTrustedOwner(stranger.Get(), user.Get(), user.Get()));
  EXPECT_FALSE(invoker::IsTrustedOwner(administrators.Get(), user.Get(), user.Get()));
  EXPECT_FALSE(invoker::IsTrustedOwner(everyone.Get(), user.Get(), administrators.Get()));
}

struct Stranger {
  const char* name;
  const wchar_t* security;
};

void PrintTo(const Stranger& stranger, std::ostream* stream) { *stream << stranger.name; }

class PipeOfAnother : public InvokerTest, public testing::WithParamInterface<Stranger> {};

TEST_P(PipeOfAnother, GetsNothingAndNoClientIsStartedInItsStead) {
  StartClient(plm_client::Settings{.security = GetParam().security});
  ConfigurePipe(R"(,"client":"C:\\no such program.exe")");
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  ExpectOneLine(L"QD_PLMLogin", L"the pipe belongs to another user");
  EXPECT_TRUE(client->Requests().empty());
}

const Stranger kStrangers[] = {{"Administrators", L"O:BAD:P(A;;GA;;;WD)"},
                               {"Everyone", L"O:WDD:P(A;;GA;;;WD)"},
                               {"TheSystem", L"O:SYD:P(A;;GA;;;WD)"},
                               {"AnotherPerson", L"O:S-1-5-21-1-2-3-1001D:P(A;;GA;;;WD)"}};
INSTANTIATE_TEST_SUITE_P(, PipeOfAnother, testing::ValuesIn(kStrangers), CaseName<Stranger>);

class PipeOfThisUser : public InvokerTest {};

TEST_F(PipeOfThisUser, IsTalkedToAlsoWithoutADescriptorOfItsOwn) {
  ConfigurePipe();
  const std::string content = R"({"jsonrpc":"2.0","id":1,"result":{"answer":"x"}})";
  const RawServer server(pipe, [&](HANDLE connection) {
    ReadBytes(connection, 50);
    WriteAll(connection, "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content);
  });
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"x");
}

}  // namespace
