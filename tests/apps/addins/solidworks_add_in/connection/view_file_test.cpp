// View.json files that are missing, malformed or of the wrong form.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "case_name.h"
#include "log_line.h"
#include "result_codes.h"
#include "views.h"

namespace {

class ViewFile : public AddInFixture {
 protected:
  /// Connects with this View.json, which fails with `code`. One log line names the file once, and ends with
  /// the code. @return what it says about the file.
  std::wstring FailToConnectWith(std::string_view bytes, HRESULT code) {
    const std::wstring file = m_home.WriteConfiguration(L"View.json", bytes);
    EXPECT_EQ(TryToConnect(), code);
    const std::wstring line = PlatformError();
    EXPECT_EQ(AddInLog(), Texts{});
    const std::wstring begin =
        L"|CSolidWorksAddIn::BuildCommandInterface|the command interface cannot be built";
    const std::wstring end = CodeText(code);
    const std::size_t found = line.find(begin);
    if (found == std::wstring::npos || !line.ends_with(end)) {
      ADD_FAILURE() << Utf8(line);
      return {};
    }
    EXPECT_NE(line.find(file), std::wstring::npos) << Utf8(line);
    EXPECT_EQ(line.find(file), line.rfind(file)) << Utf8(line);
    const std::size_t from = line.find(L": ", found + begin.size()) + 2;
    return line.substr(from, line.size() - end.size() - from);
  }
};

TEST_F(ViewFile, MayBeginWithAByteOrderMark) {
  m_home.WriteConfiguration(L"View.json", "\xEF\xBB\xBF" + ViewWithItems(2));
  Connect();
  EXPECT_EQ(m_host->Groups().at(0)->items.size(), 2u);
}

TEST_F(ViewFile, OfTheUserIsUsedInsteadOfTheInstalledDefault) {
  m_home.WriteConfiguration(L"View.json", ViewWithItems(1, "Mine"));
  Connect();
  EXPECT_EQ(m_host->Groups().at(0)->title, L"Mine");
}

/// A file that is not JSON, and the place of its first error.
struct Malformed {
  const char* name;
  const char* bytes;
  const wchar_t* place;
};

class MalformedViewFile : public ViewFile, public testing::WithParamInterface<Malformed> {};

TEST_P(MalformedViewFile, IsRejectedWithItsPlaceBeforeAnythingIsBuilt) {
  const std::wstring fault = FailToConnectWith(GetParam().bytes, hr::kJsonWrongType);
  const std::wstring place =
      L"\"" + m_home.ConfigurationPath(L"View.json") + L"\", " + GetParam().place + L": ";
  EXPECT_TRUE(fault.starts_with(place)) << Utf8(fault);
  EXPECT_EQ(m_host->Groups().size(), 0u);
  EXPECT_EQ(m_host->Tabs().size(), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    , MalformedViewFile,
    testing::Values(Malformed{"Empty", "", L"line 1, column 1"},
                    Malformed{"Truncated", "{\"name\": \"PLM\",\n \"Menu\": [{\"na", L"line 2, column 15"},
                    Malformed{"Garbage", "name = PLM", L"line 1, column 2"},
                    Malformed{"InvalidUtf8", "{\"name\":\n\n\"\xFF\xFE\"}", L"line 3, column 2"},
                    Malformed{"TrailingText", "{\"name\":\"PLM\",\"Menu\":[]}\n}", L"line 2, column 1"}),
    CaseName<Malformed>);

/// A JSON file with a missing or wrong menu.
struct WrongMenu {
  const char* name;
  const char* bytes;
  HRESULT code;
  const wchar_t* message;
};

class WrongMenuViewFile : public ViewFile, public testing::WithParamInterface<WrongMenu> {};

TEST_P(WrongMenuViewFile, IsRejectedWithTheMembersNameAndLeavesTheGroupInactive) {
  const std::wstring fault = FailToConnectWith(GetParam().bytes, GetParam().code);
  EXPECT_NE(fault.find(GetParam().message), std::wstring::npos) << Utf8(fault);
  ASSERT_EQ(m_host->Groups().size(), 1u);
  EXPECT_FALSE(m_host->Groups()[0]->active);
  EXPECT_EQ(m_host->Tabs().size(), 0u);
  EXPECT_EQ(m_host->AdvisedSinks(), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    , WrongMenuViewFile,
    testing::Values(
        WrongMenu{"Missing", R"({"name":"PLM"})", hr::kJsonMemberMissing, L"json member [Menu] not exist!"},
        WrongMenu{"OtherCase", R"({"name":"PLM","menu":[]})", hr::kJsonMemberMissing,
                  L"json member [Menu] not exist!"},
        WrongMenu{"NotAnArray", R"({"name":"PLM","Menu":{}})", hr::kJsonWrongType,
                  L"json member [Menu] is not Array!"},
        WrongMenu{"Null", R"({"name":"PLM","Menu":null})", hr::kJsonWrongType,
                  L"json member [Menu] is not Array!"},
        WrongMenu{"ElementNotAnObject", R"({"name":"PLM","Menu":["PlmLogin"]})", hr::kJsonWrongType,
                  L"json member [Menu] has an element that is no object"},
        WrongMenu{"NotAnObject", R"(["PLM"])", hr::kJsonMemberMissing, L"json member [Menu] not exist!"}),
    CaseName<WrongMenu>);

TEST_F(ViewFile, ReadsMembersOfOtherTypesAsTheirText) {
  m_home.WriteConfiguration(L"View.json",
                            R"({"name":5,"Menu":[{"name":null,"ToolTip":1,"Hint":[],"CallbackFunction":{},)"
                            R"("EnableMethod":false,"ImageListIndex":"3"},{"ImageListIndex":2.5},)"
                            R"({"ImageListIndex":4294967296}]})");
  Connect();
  const auto& group = *m_host->Groups().at(0);
  EXPECT_EQ(group.title, L"5");
  ASSERT_EQ(group.items.size(), 3u);
  const auto texts = [](const auto& item) {
    return item.name + item.tool_tip + item.hint + item.callback + item.enable_method;
  };
  EXPECT_EQ(texts(group.items[0]), L"1[]{}false") << "null is the empty text";
  EXPECT_EQ(texts(group.items[1]), L"");
  for (const auto& item : group.items) EXPECT_EQ(item.image_index, 0) << "an index must be an integer";
}

/// A menu with a fault that does not keep it from being built.
struct FaultyItem {
  const char* name;
  const char* member;      // the second item has this in place of a correct member
  const wchar_t* message;  // what is logged after the path of the file
};

class FaultyViewFile : public ViewFile, public testing::WithParamInterface<FaultyItem> {
 protected:
  /// A view whose second item has `member` in place of its member of the same name; no text leaves it out.
  static std::string ViewWith(const std::string& member) {
    std::string second;
    for (const std::string correct :
         {R"("name":"Second")", R"("ToolTip":"tip")", R"("Hint":"hint")", R"("CallbackFunction":"PlmWf")",
          R"("EnableMethod":"EnablePlmWf")", R"("ImageListIndex":15)"}) {
      const std::string key = correct.substr(0, correct.find(':'));
      if (member == key) continue;
      second += (second.empty() ? "" : ",") + (member.starts_with(key) ? member : correct);
    }
    return R"({"name":"PLM","Menu":[{"name":"First","ToolTip":"","Hint":"","CallbackFunction":"plmlogin",)"
           R"("EnableMethod":"EnablePlmLogin","ImageListIndex":0},{)" +
           second + "}]}";
  }
};

TEST_P(FaultyViewFile, IsLoggedInOneLineAndTheMenuIsBuilt) {
  const std::wstring file = m_home.WriteConfiguration(L"View.json", ViewWith(GetParam().member));

  Connect();

  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_TRUE(PlatformLog()[0].ends_with(L"|" + file + L": " + GetParam().message)) << Utf8(PlatformLog()[0]);
  EXPECT_EQ(m_host->Groups().at(0)->items.size(), 2u);
  EXPECT_TRUE(m_host->Groups().at(0)->active);
}

INSTANTIATE_TEST_SUITE_P(
    , FaultyViewFile,
    testing::Values(
        FaultyItem{"UnknownCallback", R"("CallbackFunction":"PlmWff")",
                   LR"(item 2 "Second": "CallbackFunction": "PlmWff" is not a method of the add-in)"},
        FaultyItem{"UnknownEnableMethod", R"("EnableMethod":"EnableWf")",
                   LR"(item 2 "Second": "EnableMethod": "EnableWf" is not a method of the add-in)"},
        FaultyItem{"EmptyCallback", R"("CallbackFunction":"")",
                   LR"(item 2 "Second": "CallbackFunction": "" is not a method of the add-in)"},
        FaultyItem{"IconTooHigh", R"("ImageListIndex":16)",
                   LR"(item 2 "Second": "ImageListIndex": 16 is not the number of an icon, 0 to 15)"},
        FaultyItem{"IconTooLow", R"("ImageListIndex":-1)",
                   LR"(item 2 "Second": "ImageListIndex": -1 is not the number of an icon, 0 to 15)"},
        FaultyItem{"MissingName", R"("name")", LR"(item 2 "": "name" is missing)"},
        FaultyItem{"MissingToolTip", R"("ToolTip")", LR"(item 2 "Second": "ToolTip" is missing)"},
        FaultyItem{"MissingHint", R"("Hint")", LR"(item 2 "Second": "Hint" is missing)"},
        FaultyItem{"MissingCallback", R"("CallbackFunction")",
                   LR"(item 2 "Second": "CallbackFunction" is missing)"},
        FaultyItem{"MissingEnableMethod", R"("EnableMethod")",
                   LR"(item 2 "Second": "EnableMethod" is missing)"},
        FaultyItem{"MissingIcon", R"("ImageListIndex")", LR"(item 2 "Second": "ImageListIndex" is missing)"},
        FaultyItem{"HintNotAText", R"("Hint":null)", LR"(item 2 "Second": "Hint" is not a text)"},
        FaultyItem{"CallbackNotAText", R"("CallbackFunction":[])",
                   LR"(item 2 "Second": "CallbackFunction" is not a text)"},
        FaultyItem{"IconNotANumber", R"("ImageListIndex":"3")",
                   LR"(item 2 "Second": "ImageListIndex" is not a number)"},
        FaultyItem{"IconNotAWholeNumber", R"("ImageListIndex":2.5)",
                   LR"(item 2 "Second": "ImageListIndex": 2.5 is not the number of an icon, 0 to 15)"},
        FaultyItem{"IconBeyondEveryNumber", R"("ImageListIndex":3000000000)",
                   LR"(item 2 "Second": "ImageListIndex": 3000000000 is not the number of an icon, 0 to 15)"},
        FaultyItem{"EmptyName", R"("name":"")", LR"(item 2 "": "name" is empty)"},
        FaultyItem{"CallbackOfTwoLines", R"("CallbackFunction":"A\nB")",
                   LR"(item 2 "Second": "CallbackFunction": "A B" is not a method of the add-in)"},
        FaultyItem{
            "CallbackIsAnEnableMethod", R"("CallbackFunction":"EnablePlmWf")",
            LR"(item 2 "Second": "CallbackFunction": "EnablePlmWf" is an enable method, not a command)"},
        FaultyItem{"EnableMethodIsACommand", R"("EnableMethod":"plmwf")",
                   LR"(item 2 "Second": "EnableMethod": "plmwf" is a command, not an enable method)"},
        FaultyItem{"CallbackGoesOnAfterANullCharacter", R"("CallbackFunction":"PlmWf\u0000x")",
                   LR"(item 2 "Second": "CallbackFunction": "PlmWf x" is not a method of the add-in)"},
        FaultyItem{"RepeatedKey", R"("Hint":"hint","Hint":"other","Hint":"third")",
                   LR"(item 2 "Second": "Hint" is given more than once; the first one counts)"}),
    CaseName<FaultyItem>);

TEST_F(ViewFile, WithoutATitleIsLogged) {
  const std::wstring file = m_home.WriteConfiguration(L"View.json", R"({"Menu":[]})");
  Connect();
  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_TRUE(PlatformLog()[0].ends_with(L"|" + file + L": \"name\" is missing")) << Utf8(PlatformLog()[0]);
}

TEST_F(ViewFile, WithAnEmptyTitleIsLogged) {
  const std::wstring file = m_home.WriteConfiguration(L"View.json", R"({"name":"","Menu":[]})");
  Connect();
  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_TRUE(PlatformLog()[0].ends_with(L"|" + file + L": \"name\" is empty")) << Utf8(PlatformLog()[0]);
}

TEST_F(ViewFile, WithRepeatedKeysIsLoggedKeyByKey) {
  const std::wstring file = m_home.WriteConfiguration(
      L"View.json", R"({"name":"PLM","Menu":[],"name":"B","x":1,"Menu":[{}],"y":2})");
  Connect();
  ASSERT_EQ(PlatformLog().size(), 2u);
  const std::wstring end = L" is given more than once; the first one counts";
  EXPECT_TRUE(PlatformLog()[0].ends_with(L"|" + file + L": \"Menu\"" + end)) << Utf8(PlatformLog()[0]);
  EXPECT_TRUE(PlatformLog()[1].ends_with(L"|" + file + L": \"name\"" + end)) << Utf8(PlatformLog()[1]);
}

TEST_F(ViewFile, WithoutAFaultIsNotLogged) {
  m_home.WriteConfiguration(L"View.json", ViewWithItems(16));
  Connect();
  EXPECT_EQ(PlatformLog(), Texts{});
}

TEST_F(ViewFile, IsRejectedIfItIsNestedTooDeep) {
  const std::string deep(100'000, '[');
  FailToConnectWith(R"({"name":"PLM","Menu":)" + deep + std::string(100'000, ']') + "}", hr::kJsonWrongType);
}

TEST_F(ViewFile, CanBeCorrectedAndReadAgain) {
  FailToConnectWith("{", hr::kJsonWrongType);
  m_home.WriteConfiguration(L"View.json", ViewWithItems(2));
  RestartHost();
  Connect();
  EXPECT_EQ(m_host->Groups().at(0)->items.size(), 2u);
}

}  // namespace
