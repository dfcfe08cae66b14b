// Objects with so many members that a linear search would be too slow.
#include <ctime>

#include "json_test_support.h"

namespace {

constexpr int kMany = 1000;

std::wstring Name(int index) { return L"member " + std::to_wstring(index); }

/// `{"member 0":"0 END", ...}` with `kMany` members.
std::wstring ManyMembers(const std::wstring& end = L"") {
  std::wstring text;
  for (int index = 0; index < kMany; ++index) {
    text += (index == 0 ? L"\"" : L",\"") + Name(index) + L"\":\"" + std::to_wstring(index) + end + L"\"";
  }
  return L"{" + text + L"}";
}

/// Expects that the object has exactly the members of ManyMembers.
void ExpectMany(const CJsonObject& object, const std::wstring& end = L"") {
  for (int index = 0; index < kMany; ++index) {
    ASSERT_EQ(object.GetStringValue(Name(index)), std::to_wstring(index) + end) << index;
  }
  EXPECT_FALSE(object.IsExist(Name(kMany)));
  EXPECT_FALSE(object.IsExist(L"Member 0"));
  EXPECT_FALSE(object.IsExist(L""));
}

TEST(LargeObject, HasItsMembersAfterParsing) { ExpectMany(*Parse(ManyMembers())); }

TEST(LargeObject, HasItsMembersWhileItGrows) {
  CJsonObject object;
  for (int index = 0; index < kMany; ++index) {
    EXPECT_FALSE(object.IsExist(Name(index)));
    object.SetStringValue(Name(index), std::to_wstring(index));
    EXPECT_EQ(object.GetStringValue(Name(index)), std::to_wstring(index));
    EXPECT_EQ(object.GetStringValue(Name(0)), L"0");
  }
  ExpectMany(object);
  EXPECT_EQ(object.ToJson(), ManyMembers());
}

TEST(LargeObject, HasReplacedValues) {
  const auto object = Parse(ManyMembers());
  for (int index = 0; index < kMany; ++index) {
    object->SetStringValue(Name(index), std::to_wstring(index) + L" new");
  }
  ExpectMany(*object, L" new");
}

TEST(LargeObject, FindsTheFirstOfEqualNames) {
  std::wstring text = ManyMembers();
  text.replace(text.size() - 1, 1, LR"(,"member 7":"second","once":"1","once":"2"})");
  const auto object = Parse(text);
  EXPECT_EQ(object->GetStringValue(L"member 7"), L"7");
  EXPECT_EQ(object->GetStringValue(L"once"), L"1");
}

TEST(LargeObject, HasTheMembersOfItsLatestContent) {
  const auto object = Parse(ManyMembers());
  for (const wchar_t* end : {L" b", L" c", L" d"}) {
    EXPECT_TRUE(object->CreateFrom(ManyMembers(end)));
    ExpectMany(*object, end);
  }
  EXPECT_TRUE(object->CreateFrom(L"{}"));
  EXPECT_FALSE(object->IsExist(Name(0)));
  EXPECT_FALSE(object->CreateFrom(L"{"));
  EXPECT_FALSE(object->IsExist(Name(0)));
}

TEST(LargeObject, HasTheChangesMadeThroughAView) {
  const auto parent = Parse(L"{\"a\":" + ManyMembers() + L"}");
  const auto first = parent->GetObjectShared(L"a");
  const auto second = parent->GetObjectShared(L"a");
  ExpectMany(*first);
  ExpectMany(*second);
  second->SetStringValue(L"added", L"x");
  EXPECT_EQ(first->GetStringValue(L"added"), L"x");
  second->CopyFrom(*Parse(ManyMembers(L" other")));
  ExpectMany(*first, L" other");
  EXPECT_TRUE(second->CreateFrom(ManyMembers(L" parsed")));
  ExpectMany(*first, L" parsed");
}

TEST(LargeObject, HasTheMembersOfACopy) {
  const auto parent = Parse(L"{\"a\":" + ManyMembers() + L"}");
  ExpectMany(*parent->GetObjectCopy(L"a"));
  CJsonObject object;
  object.SetStringValue(L"before", L"x");
  object.CopyFrom(*parent->GetObjectShared(L"a"));
  ExpectMany(object);
  EXPECT_FALSE(object.IsExist(L"before"));
}

// A linear search would take minutes here. The processor's time is measured, where the system tells it apart,
// so that a busy machine does not fail the test.
TEST(LargeObject, OfAHundredThousandMembersIsMadeAndReadInSeconds) {
  constexpr int kCount = 100'000;
  const std::clock_t start = std::clock();
  CJsonObject object;
  for (int index = 0; index < kCount; ++index) object.SetStringValue(Name(index), L"x");
  for (int index = 0; index < kCount; ++index) ASSERT_TRUE(object.IsExist(Name(index)));
  EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 10);
}

}  // namespace
