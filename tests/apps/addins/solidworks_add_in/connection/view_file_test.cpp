// View.json files that are missing, malformed or of the wrong form.
#include <gtest/gtest.h>

#include "CZALException.h"
#include "add_in_fixture.h"
#include "case_name.h"
#include "result_codes.h"
#include "views.h"

namespace {

class ViewFile : public AddInFixture {
 protected:
  /// Connects and returns the exception that the add-in throws.
  CZALException ConnectAndCatch() {
    try {
      Connect();
    } catch (const CZALException& exception) {
      return exception;
    }
    ADD_FAILURE() << "no exception";
    return {0, L""};
  }

  /// Connects with this View.json. One log line names the file and has the exception's message.
  CZALException FailToConnectWith(std::string_view bytes) {
    const std::wstring file = m_home.WriteConfiguration(L"View.json", bytes);
    const CZALException exception = ConnectAndCatch();
    EXPECT_EQ(PlatformLog().size(), 1u);
    EXPECT_TRUE(PlatformLog().empty() || PlatformLog()[0].find(file) != std::wstring::npos);
    EXPECT_TRUE(PlatformLog().empty() ||
                PlatformLog()[0].find(exception.GetErrorMessage()) != std::wstring::npos);
    return exception;
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

TEST_P(MalformedViewFile, IsRejectedBeforeAnythingIsBuilt) {
  const CZALException exception = FailToConnectWith(GetParam().bytes);
  EXPECT_NE(exception.GetErrorMessage().find(GetParam().place), std::wstring::npos)
      << Utf8(exception.GetErrorMessage());
  EXPECT_EQ(m_host->Groups().size(), 0u);
  EXPECT_EQ(m_host->Tabs().size(), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    , MalformedViewFile,
    testing::Values(Malformed{"Empty", "", L"line 1"},
                    Malformed{"Truncated", "{\"name\": \"PLM\",\n \"Menu\": [{\"na", L"line 2"},
                    Malformed{"Garbage", "name = PLM", L"line 1"},
                    Malformed{"InvalidUtf8", "{\"name\":\n\n\"\xFF\xFE\"}", L"line 3"},
                    Malformed{"TrailingText", "{\"name\":\"PLM\",\"Menu\":[]}\n}", L"line 2"}),
    CaseName<Malformed>);

/// A JSON file with a missing or wrong menu.
struct WrongMenu {
  const char* name;
  const char* bytes;
  long code;
  const wchar_t* message;
};

class WrongMenuViewFile : public ViewFile, public testing::WithParamInterface<WrongMenu> {};

TEST_P(WrongMenuViewFile, ThrowsThePlatformExceptionAndLeavesTheGroupInactive) {
  const CZALException exception = FailToConnectWith(GetParam().bytes);
  EXPECT_EQ(exception.GetErrorCode(), GetParam().code);
  EXPECT_NE(exception.GetErrorMessage().find(GetParam().message), std::wstring::npos)
      << Utf8(exception.GetErrorMessage());
  ASSERT_EQ(m_host->Groups().size(), 1u);
  EXPECT_FALSE(m_host->Groups()[0]->active);
  EXPECT_EQ(m_host->Tabs().size(), 0u);
  EXPECT_EQ(m_host->AdvisedSinks(), 0u);
}

INSTANTIATE_TEST_SUITE_P(, WrongMenuViewFile,
                         testing::Values(WrongMenu{"Missing", R"({"name":"PLM"})", hr::kJsonMemberMissing,
                                                   L"json member [Menu] not exist!"},
                                         WrongMenu{"OtherCase", R"({"name":"PLM","menu":[]})",
                                                   hr::kJsonMemberMissing, L"json member [Menu] not exist!"},
                                         WrongMenu{"NotAnArray", R"({"name":"PLM","Menu":{}})",
                                                   hr::kJsonWrongType, L"json member [Menu] is not Array!"},
                                         WrongMenu{"Null", R"({"name":"PLM","Menu":null})",
                                                   hr::kJsonWrongType, L"json member [Menu] is not Array!"},
                                         WrongMenu{"ElementNotAnObject",
                                                   R"({"name":"PLM","Menu":["PlmLogin"]})",
                                                   hr::kJsonWrongType, L"IsObject()"},
                                         WrongMenu{"NotAnObject", R"(["PLM"])", hr::kJsonMemberMissing,
                                                   L"json member [Menu] not exist!"}),
                         CaseName<WrongMenu>);

TEST_F(ViewFile, TreatsMembersOfTheWrongTypeAsMissing) {
  m_home.WriteConfiguration(L"View.json",
                            R"({"name":5,"Menu":[{"name":null,"ToolTip":1,"Hint":[],"CallbackFunction":{},)"
                            R"("EnableMethod":false,"ImageListIndex":"3"},{"ImageListIndex":2.5},)"
                            R"({"ImageListIndex":4294967296}]})");
  Connect();
  const auto& group = *m_host->Groups().at(0);
  EXPECT_EQ(group.title, L"");
  ASSERT_EQ(group.items.size(), 3u);
  for (const auto& item : group.items) {
    EXPECT_EQ(item.name + item.tool_tip + item.hint + item.callback + item.enable_method, L"");
    EXPECT_EQ(item.image_index, 0);
  }
}

TEST_F(ViewFile, IsRejectedIfItIsNestedTooDeep) {
  const std::string deep(100'000, '[');
  FailToConnectWith(R"({"name":"PLM","Menu":)" + deep + std::string(100'000, ']') + "}");
}

TEST_F(ViewFile, CanBeCorrectedAndReadAgain) {
  FailToConnectWith("{");
  m_home.WriteConfiguration(L"View.json", ViewWithItems(2));
  RestartHost();
  Connect();
  EXPECT_EQ(m_host->Groups().at(0)->items.size(), 2u);
}

}  // namespace
