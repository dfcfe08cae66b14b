// What happens to messages if memory runs out.
#include <gtest/gtest.h>

#include <new>

#include "failing_allocation.h"
#include "message.h"

namespace invoker {
namespace {

TEST(OutOfMemory, WhileARequestIsMadeIsThrown) {
  const std::wstring json(100'000, L'\u96f6');
  const std::string expected = MakeRequest(7, L"QD_PLMLogin", json);
  FailEachAllocation([&](Attempt& attempt) {
    std::string request;
    try {
      attempt([&] { request = MakeRequest(7, L"QD_PLMLogin", json); });
      EXPECT_FALSE(attempt.Fails());
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(attempt.Fails());
    }
    EXPECT_EQ(request, attempt.Fails() ? "" : expected);
  });
}

TEST(OutOfMemory, WhileAnAnswerIsReadIsThrown) {
  std::string content = R"({"jsonrpc":"2.0","id":7,"more":[)";
  for (int i = 0; i < 5000; ++i) content += R"({"a name of more than fourteen bytes":[1e300,true]},)";
  content += R"({}],"result":{"answer":"a text of more than fourteen bytes"}})";
  FailEachAllocation([&](Attempt& attempt) {
    std::wstring answer;
    try {
      attempt([&] { answer = ReadAnswer(content, 7); });
      EXPECT_FALSE(attempt.Fails());
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(attempt.Fails());
    }
    EXPECT_EQ(answer, attempt.Fails() ? L"" : L"a text of more than fourteen bytes");
  });
}

}  // namespace
}  // namespace invoker
