// The accessors of arrays and objects, and copies.
#include "json_test_support.h"

using namespace std::string_literals;

namespace {

TEST(ObjectArray, HasASeparateObjectForEachElement) {
  const auto json = Parse(LR"({"Menu":[{"b":"x","a":[1,{"c":null}],"b":2},{},{"z":"y"}]})");
  const auto objects = json->GetObjectArray(L"Menu");
  ASSERT_EQ(objects.size(), 3u);
  EXPECT_EQ(objects[0]->ToJson(), LR"({"b":"x","a":[1,{"c":null}],"b":2})") << "in member order";
  EXPECT_EQ(objects[1]->ToJson(), L"{}");
  EXPECT_EQ(objects[2]->ToJson(), LR"({"z":"y"})");

  objects[2]->SetStringValue(L"z", L"changed");
  EXPECT_EQ(json->ToJson(), LR"({"Menu":[{"b":"x","a":[1,{"c":null}],"b":2},{},{"z":"y"}]})");
}

TEST(ObjectArray, OfAnEmptyArrayIsEmpty) {
  EXPECT_TRUE(Parse(LR"({"Menu":[]})")->GetObjectArray(L"Menu").empty());
}

TEST(ObjectArray, IsRefusedIfAnElementIsNotAnObject) {
  for (const wchar_t* text :
       {LR"({"Menu":[1]})", LR"({"Menu":[{"a":"x"},[]]})", LR"({"Menu":[null]})", LR"({"Menu":["x"]})"}) {
    const auto json = Parse(text);
    ExpectException(kWrongType, L"json member [Menu] has an element that is no object",
                    [&] { json->GetObjectArray(L"Menu"); });
    EXPECT_EQ(json->ToJson(), text) << "the object is unchanged";
  }
}

TEST(ObjectArray, OutlivesItsParent) {
  auto json = Parse(LR"({"Menu":[{"name":"a text of more than fourteen bytes"}]})");
  const auto objects = json->GetObjectArray(L"Menu");
  json.reset();
  EXPECT_EQ(objects[0]->GetStringValue(L"name"), L"a text of more than fourteen bytes");
}

TEST(ObjectCopy, IsIndependentOfItsParent) {
  auto json = Parse(LR"({"o":{"a":"a text of more than fourteen bytes","b":{"c":[]}}})");
  const auto copy = json->GetObjectCopy(L"o");
  copy->SetStringValue(L"a", L"changed");
  EXPECT_EQ(json->ToJson(), LR"({"o":{"a":"a text of more than fourteen bytes","b":{"c":[]}}})");
  json.reset();
  EXPECT_EQ(copy->ToJson(), LR"({"a":"changed","b":{"c":[]}})");
}

TEST(SharedObject, IsAViewThatChangesItsParent) {
  const auto json = Parse(LR"({"o":{"a":"x"},"p":1})");
  const auto view = json->GetObjectShared(L"o");
  EXPECT_EQ(view->Share(), json->Share());
  view->SetStringValue(L"a", L"changed");
  view->SetStringValue(L"b", L"new");
  EXPECT_EQ(json->ToJson(), LR"({"o":{"a":"changed","b":"new"},"p":1})");
  json->GetObjectShared(L"o")->SetStringValue(L"c", L"more");
  EXPECT_EQ(view->ToJson(), LR"({"a":"changed","b":"new","c":"more"})")
      << "changes of the parent show in the view";
}

TEST(SharedObject, CanShareItsMembers) {
  const auto json = Parse(LR"({"o":{"p":{"q":{}}}})");
  const auto inner = json->GetObjectShared(L"o")->GetObjectShared(L"p")->GetObjectShared(L"q");
  inner->SetStringValue(L"a", L"x");
  EXPECT_EQ(json->ToJson(), LR"({"o":{"p":{"q":{"a":"x"}}}})");
}

TEST(SharedObject, KeepsTheDocumentAlive) {
  auto json = Parse(LR"({"o":{"a":"a text of more than fourteen bytes"}})");
  const auto view = json->GetObjectShared(L"o");
  json.reset();
  EXPECT_EQ(view->GetStringValue(L"a"), L"a text of more than fourteen bytes");
}

TEST(SharedObject, ParsedAgainIsReplacedInTheDocument) {
  const auto json = Parse(LR"({"before":1,"o":{"a":"x"},"after":2})");
  const auto view = json->GetObjectShared(L"o");
  EXPECT_TRUE(view->CreateFrom(LR"({"b":["a text of more than fourteen bytes"]})"));
  EXPECT_EQ(json->ToJson(), LR"({"before":1,"o":{"b":["a text of more than fourteen bytes"]},"after":2})");
  EXPECT_FALSE(view->CreateFrom(L"{"));
  EXPECT_EQ(json->ToJson(), LR"({"before":1,"o":{},"after":2})");
  EXPECT_TRUE(view->CreateFrom(L"[7]"));
  EXPECT_EQ(json->ToJson(), LR"({"before":1,"o":[7],"after":2})");
}

TEST(SharedObject, CanBeParsedAgainAfterItsParentIsDestroyed) {
  auto json = Parse(LR"({"o":{"a":"x"}})");
  const auto view = json->GetObjectShared(L"o");
  json.reset();
  EXPECT_TRUE(view->CreateFrom(LR"({"b":"a text of more than fourteen bytes"})"));
  EXPECT_EQ(view->ToJson(), LR"({"b":"a text of more than fourteen bytes"})");
}

TEST(SharedObject, StaysValidAfterItsParentIsParsedAgain) {
  const auto json = Parse(LR"({"o":{"a":"a text of more than fourteen bytes"}})");
  const auto view = json->GetObjectShared(L"o");
  EXPECT_TRUE(json->CreateFrom(LR"({"o":{"b":"y"}})"));
  EXPECT_EQ(view->GetStringValue(L"a"), L"a text of more than fourteen bytes");
  EXPECT_EQ(json->GetObjectShared(L"o")->ToJson(), LR"({"b":"y"})");
}

TEST(SharedObject, OfTheRootIsTheWholeDocument) {
  const auto json = Parse(LR"({"a":"x"})");
  CJsonObject view(json->Share(), json->Share().get());
  EXPECT_TRUE(view.CreateFrom(LR"({"b":"y"})"));
  EXPECT_EQ(json->ToJson(), LR"({"b":"y"})");
}

using Accessor = void (*)(const CJsonObject&, const std::wstring& key);

struct AccessorCase {
  const char* name;
  Accessor call;
  const wchar_t* type;
  std::vector<const wchar_t*> wrong_values;
};

void PrintTo(const AccessorCase& accessor, std::ostream* out) { *out << accessor.name; }

const AccessorCase kAccessors[] = {
    {"array",
     [](const CJsonObject& json, const std::wstring& key) { json.GetObjectArray(key); },
     L"Array",
     {L"1", L"1.5", L"\"x\"", L"true", L"null", L"{}"}},
    {"copy",
     [](const CJsonObject& json, const std::wstring& key) { json.GetObjectCopy(key); },
     L"Object",
     {L"1", L"1.5", L"\"x\"", L"false", L"null", L"[]", L"[{}]"}},
    {"shared",
     [](const CJsonObject& json, const std::wstring& key) { json.GetObjectShared(key); },
     L"Object",
     {L"1", L"1.5", L"\"x\"", L"false", L"null", L"[]", L"[{}]"}},
};

class Accessors : public testing::TestWithParam<AccessorCase> {};

TEST_P(Accessors, ThrowIfTheMemberIsMissing) {
  const auto json = Parse(LR"({"a":1,"Menu":[],"object":{}})");
  for (const std::wstring& key : {L"b"s, L"menu"s, L"Object"s, L""s, L"\u96f6\0x"s}) {
    ExpectException(kMemberMissing, L"json member [" + key + L"] not exist!",
                    [&] { GetParam().call(*json, key); });
  }
}

TEST_P(Accessors, ThrowIfTheMemberHasTheWrongType) {
  for (const std::wstring value : GetParam().wrong_values) {
    const std::wstring text = L"{\"a\":" + value + L"}";
    const auto json = Parse(text);
    ExpectException(kWrongType, L"json member [a] is not "s + GetParam().type + L"!",
                    [&] { GetParam().call(*json, L"a"); });
    EXPECT_EQ(json->ToJson(), text) << "the object is unchanged";
  }
}

TEST_P(Accessors, FindNoMemberInAValueThatIsNotAnObject) {
  for (const wchar_t* text : {L"[{\"a\":{}}]", L"\"a\"", L"1", L"null"}) {
    ExpectException(kMemberMissing, L"json member [a] not exist!",
                    [&] { GetParam().call(*Parse(text), L"a"); });
  }
}

TEST_P(Accessors, LookAtTheFirstOfEqualNames) {
  const auto json = Parse(LR"({"a":1,"a":[],"a":{}})");
  EXPECT_EQ(ExceptionOf([&] { GetParam().call(*json, L"a"); }).GetErrorCode(), kWrongType);
}

std::string NameOf(const testing::TestParamInfo<AccessorCase>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, Accessors, testing::ValuesIn(kAccessors), NameOf);

TEST(CopyFrom, CopiesEveryMember) {
  CJsonObject copy;
  copy.SetStringValue(L"before", L"x");
  {
    const auto json = Parse(LR"({"b":"a text of more than fourteen bytes","a":{"c":[1,"d"]},"b":2})");
    copy.CopyFrom(*json);
    json->SetStringValue(L"b", L"changed");
  }
  EXPECT_EQ(copy.ToJson(), LR"({"b":"a text of more than fourteen bytes","a":{"c":[1,"d"]},"b":2})");
}

TEST(CopyFrom, CopiesStringsThatAreHeldByReference) {
  std::string text = "held by reference";
  CJsonObject json;
  auto& document = *json.Share();
  CJsonObject::Value array(rapidjson::kArrayType);
  array.PushBack(rapidjson::StringRef(text.data(), text.size()), document.GetAllocator());
  document.AddMember(rapidjson::StringRef(text.data(), text.size()), array, document.GetAllocator());
  CJsonObject copy;
  copy.CopyFrom(json);
  text.assign(text.size(), '#');
  EXPECT_EQ(copy.ToJson(), LR"({"held by reference":["held by reference"]})");
}

TEST(CopyFrom, OfItselfChangesNothing) {
  const auto json = Parse(LR"({"a":"x","b":{"c":1}})");
  json->CopyFrom(*json);
  EXPECT_EQ(json->ToJson(), LR"({"a":"x","b":{"c":1}})");
}

TEST(CopyFrom, CopiesAPartOfItself) {
  const auto json = Parse(LR"({"a":{"b":{"c":"x"}}})");
  json->CopyFrom(*json->GetObjectShared(L"a"));
  EXPECT_EQ(json->ToJson(), LR"({"b":{"c":"x"}})");
}

TEST(CopyFrom, CopiesItsParent) {
  const auto json = Parse(LR"({"x":1,"a":{"b":2}})");
  json->GetObjectShared(L"a")->CopyFrom(*json);
  EXPECT_EQ(json->ToJson(), LR"({"x":1,"a":{"x":1,"a":{"b":2}}})");
}

TEST(CopyFrom, IntoAViewChangesTheParent) {
  const auto json = Parse(LR"({"a":{"b":2},"c":3})");
  json->GetObjectShared(L"a")->CopyFrom(*Parse(LR"({"d":"x"})"));
  EXPECT_EQ(json->ToJson(), LR"({"a":{"d":"x"},"c":3})");
}

}  // namespace
