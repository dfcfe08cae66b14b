#include "misbehaviour.h"

#include <gtest/gtest.h>

using namespace plm_window;
using namespace std::chrono_literals;

namespace {

TEST(Misbehaviour, IsReadFromAText) {
  EXPECT_EQ(ParseFault(L"late:12").fault, Fault::kLate);
  EXPECT_EQ(ParseFault(L"late:12").delay, 12s);
  EXPECT_EQ(ParseFault(L"never").fault, Fault::kNever);
  EXPECT_EQ(ParseFault(L"garbage").fault, Fault::kGarbage);
  EXPECT_EQ(ParseFault(L"half-frame").fault, Fault::kHalfFrame);
  EXPECT_EQ(ParseFault(L"die").fault, Fault::kDie);
  for (const wchar_t* const text : {L"", L"late", L"late:", L"late:x", L"late:99999", L"rude"}) {
    EXPECT_THROW(ParseFault(text), std::runtime_error) << testing::PrintToString(text);
  }
}

TEST(Misbehaviour, ChangesTheReply) {
  const std::string proper = ReplyWith({}, "{}").BytesFor(7);
  EXPECT_EQ(proper, plm_client::Reply::Text("{}").BytesFor(7));
  EXPECT_EQ(ReplyWith({Fault::kLate, 5s}, "{}").BytesFor(7), proper);
  EXPECT_EQ(ReplyWith({Fault::kLate, 5s}, "{}").Delay(), 5s);
  EXPECT_EQ(ReplyWith({Fault::kNever}, "{}").BytesFor(7), "");
  EXPECT_FALSE(ReplyWith({Fault::kNever}, "{}").Disconnects());
  EXPECT_EQ(ReplyWith({Fault::kGarbage}, "{}").BytesFor(7).find("jsonrpc"), std::string::npos);
  const plm_client::Reply half = ReplyWith({Fault::kHalfFrame}, "{}");
  EXPECT_LT(half.BytesFor(7).size(), proper.size());
  EXPECT_TRUE(half.BytesFor(7).starts_with("Content-Length: "));
  EXPECT_TRUE(half.Disconnects());
}

TEST(Misbehaviour, IsForTheNextAnswerOrForAll) {
  Misbehaviour misbehaviour;
  misbehaviour.Choose({Fault::kNever}, false);
  EXPECT_EQ(misbehaviour.Take().fault, Fault::kNever);
  EXPECT_EQ(misbehaviour.Take().fault, Fault::kNone);
  misbehaviour.Choose({Fault::kGarbage}, true);
  EXPECT_EQ(misbehaviour.Take().fault, Fault::kGarbage);
  EXPECT_EQ(misbehaviour.Take().fault, Fault::kGarbage);
}

}  // namespace
