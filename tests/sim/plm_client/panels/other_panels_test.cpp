#include "CJsonObject.h"
#include "CStringHelper.h"
#include "panel_fixture.h"
#include "panels/text_ids.h"

using namespace plm_panels;
using namespace plm_vault;

namespace {

class OtherPanelsTest : public PanelTest {};

TEST_F(OtherPanelsTest, LogInAnswersWithATokenByWhichLaterCommandsKnowTheUser) {
  const auto panel = Make("QD_PLMLogin");
  EXPECT_EQ(panel->Fields()[0].value, L"kim") << "who is proposed";
  EXPECT_EQ(panel->Fields()[0].choices.size(), 2u);
  panel->SetField(L"user", L"wang");
  const std::wstring answer = panel->Perform(L"log-in").value();
  CJsonObject object;
  ASSERT_TRUE(object.CreateFrom(answer));
  EXPECT_TRUE(object.GetPropertyBoolValue(L"__InvokeResult__").second);
  EXPECT_EQ(object.GetStringValue(L"user"), L"wang");
  EXPECT_EQ(object.GetStringValue(L"name"), L"\u738b\u6653\u660e");
  EXPECT_EQ(m_vault.UserOfToken(object.GetStringValue(L"token")), L"wang");

  m_session.user.clear();
  EXPECT_EQ(Make("QD_PLMGetcode", CStringHelper::UnicodeToUTF8(answer))->User(), L"wang") << "by the token";
  EXPECT_EQ(Make("QD_PLMMyTempMaterial")->User(), L"kim") << "without a token, who is proposed";
  m_session.user = L"wang";
  EXPECT_EQ(Make("QD_PLMMyTempMaterial")->User(), L"wang") << "without a token, who is logged in";
}

TEST_F(OtherPanelsTest, LogInOfTheSameTokenIsNotPreviewed) {
  const auto panel = Make("QD_PLMLogin");
  EXPECT_EQ(Compact(panel->Preview(L"log-in")),
            R"({"__InvokeResult__":true,"user":"kim","name":"Kim Lindqvist","token":"..."})");
  EXPECT_EQ(m_session.user, L"");
}

TEST_F(OtherPanelsTest, LogOutEndsTheLogInsOrStays) {
  const std::wstring token = m_vault.LogIn(L"kim");
  m_session.user = L"kim";
  EXPECT_EQ(AnswerOf(*Make("QD_PLMLogout"), L"stay"), R"({"__InvokeResult__":false})");
  EXPECT_EQ(m_vault.UserOfToken(token), L"kim");
  EXPECT_EQ(AnswerOf(*Make("QD_PLMLogout"), L"log-out"), R"({"__InvokeResult__":true})");
  EXPECT_EQ(m_vault.UserOfToken(token), L"");
  EXPECT_EQ(m_session.user, L"");
}

TEST_F(OtherPanelsTest, LogOutHappensByItselfBeforeTheHostGivesUpWaiting) {
  constexpr int kLongestWaitOfTheHost = 10'000;
  const auto automatic = Make("QD_PLMLogout")->Automatic();
  ASSERT_TRUE(automatic.has_value());
  EXPECT_EQ(automatic->name, L"log-out");
  EXPECT_LT(automatic->milliseconds, kLongestWaitOfTheHost / 2);
  EXPECT_FALSE(Make("QD_PLMLogin")->Automatic().has_value());
}

TEST_F(OtherPanelsTest, GetCodeTakesNumbersOfTheSeriesAndAnswersWithThem) {
  const auto panel = Make("QD_PLMGetcode");
  EXPECT_EQ(FailureOf(*panel, L"done"), L"\"done\" is not possible now");
  EXPECT_EQ(AnswerOf(*panel, L"take"), "stays");
  EXPECT_EQ(panel->Fields()[1].value, L"P-00001");
  panel->SetField(L"series", L"M-");
  EXPECT_EQ(AnswerOf(*panel, L"take"), "stays");
  EXPECT_EQ(panel->Actions()[0].name, L"done") << "the default button is what comes next";
  EXPECT_EQ(AnswerOf(*panel, L"done"), R"({"codes":["P-00001","M-000001"]})");
  EXPECT_EQ(m_vault.PeekNumber(L"P-"), L"P-00002");
}

TEST_F(OtherPanelsTest, CreateMaterialStoresTheDocumentsPropertiesUnderANumber) {
  const auto panel = Make("QD_PLMCreateMaterial",
                          R"({"extract_info":{"Number":"-","Description":"螺栓 M8","Weight":"1.2 kg"}})");
  EXPECT_EQ(panel->Fields()[1].value, L"\u87ba\u6813 M8") << "the name that is proposed";
  EXPECT_EQ(panel->Details().size(), 3u);
  const std::string answer = R"({"data":{"number":"M-000001","name":"螺栓 M8","group":")" +
                             std::to_string(IDS_GROUP_FASTENERS) + R"("}})";
  EXPECT_EQ(Compact(panel->Preview(L"create")), answer);
  EXPECT_TRUE(m_vault.FindMaterials({}).empty());
  EXPECT_EQ(AnswerOf(*panel, L"create"), answer);
  ASSERT_EQ(m_vault.FindMaterials({}).size(), 1u);
  EXPECT_EQ(m_vault.FindMaterials({})[0].properties[2], (Properties::value_type{L"Weight", L"1.2 kg"}));
}

TEST_F(OtherPanelsTest, CreateMaterialWithoutADocumentWantsAName) {
  const auto panel = Make("QD_PLMCreateMaterial", "");
  EXPECT_EQ(FailureOf(*panel, L"create"), L"\"create\" is not possible now");
  panel->SetField(L"name", L"Grease");
  EXPECT_NE(AnswerOf(*panel, L"create"), "stays");
}

TEST_F(OtherPanelsTest, NothingIsAnsweredWithExactlyTwoCharacters) {
  EXPECT_EQ(Make("QD_PLMCreateMaterial")->Perform(L"nothing"), L"{}");
  EXPECT_EQ(Make("QD_PLMMaterialBackFill")->Perform(L"nothing"), L"{}");
}

TEST_F(OtherPanelsTest, BackFillAnswersWithThePropertiesOfTheMaterialAndItsNumber) {
  m_vault.CreateMaterial(L"Bolt", L"Fasteners", {{L"Number", L"-"}, {L"Weight", L"1.50"}}, L"kim");
  m_vault.CreateMaterial(L"Nut", L"Fasteners", {}, L"kim");
  const auto panel = Make("QD_PLMMaterialBackFill");
  EXPECT_EQ(FailureOf(*panel, L"fill"), L"\"fill\" is not possible now");
  panel->SetField(L"search", L"bolt");
  SelectRows(*panel, {L"M-000001"});
  EXPECT_EQ(AnswerOf(*panel, L"fill"),
            R"({"material_property_back_fill":{"Number":"M-000001","Weight":"1.50"}})");
}

TEST_F(OtherPanelsTest, BackFillSelectsTheMaterialThatWasJustCreated) {
  m_vault.CreateMaterial(L"Bolt", L"", {}, L"kim");
  m_vault.CreateMaterial(L"Nut", L"", {}, L"kim");
  const auto panel = Make("QD_PLMMaterialBackFill",
                          R"({"backfill_info_from_create_material":{"number":"M-000002","name":"Nut"}})");
  EXPECT_EQ(panel->Selection(), std::vector<std::size_t>{1});
  EXPECT_EQ(AnswerOf(*panel, L"fill"), R"({"material_property_back_fill":{"Number":"M-000002"}})");
}

TEST_F(OtherPanelsTest, TemporaryMaterialsCanBeKept) {
  m_vault.CreateMaterial(L"Bolt", L"", {{L"A", L"b"}}, L"kim");
  m_vault.CreateMaterial(L"Nut", L"", {}, L"kim");
  const auto panel = Make("QD_PLMMyTempMaterial");
  SelectRows(*panel, {L"M-000001"});
  EXPECT_EQ(panel->Details().size(), 1u);
  EXPECT_EQ(Compact(panel->Preview(L"done")), R"({"materials":["M-000001"]})");
  EXPECT_EQ(AnswerOf(*panel, L"keep"), "stays");
  EXPECT_EQ(panel->RowCount(), 1u);
  EXPECT_EQ(AnswerOf(*panel, L"done"), R"({"materials":[]})");
}

TEST_F(OtherPanelsTest, EveryCommandHasATitleOfItsOwn) {
  std::map<unsigned, std::string> titles;
  for (const char* const command :
       {"QD_PLMLogin", "QD_PLMLogout", "QD_PLMDataSelector", "QD_PLMQuery", "QD_PLMMyCheckOutList",
        "QD_PLMTaskManage", "QD_PLMStartWF", "QD_PLMGetcode", "QD_PLMMyTempMaterial", "QD_PLMImportCurrent",
        "QD_PLMCreateChangeItems", "QD_PLMLotimport", "QD_PLMCreateMaterial", "QD_PLMMaterialBackFill"}) {
    const auto [place, is_new] = titles.emplace(Make(command)->Title(), command);
    EXPECT_TRUE(is_new) << command << " has the title of " << place->second;
  }
  EXPECT_FALSE(titles.contains(IDS_COMMAND_OTHER));
  EXPECT_EQ(Make("QD_PLMDance")->Title(), static_cast<unsigned>(IDS_COMMAND_OTHER));
  EXPECT_TRUE(Make("QD_PLMDance")->Actions().empty());
}

TEST_F(OtherPanelsTest, ARequestThatIsNoJsonSaysNothing) {
  for (const char* const request : {"", "{", "[]", "5", R"({"token":5,"extract_info":[]})"}) {
    EXPECT_EQ(Make("QD_PLMCreateMaterial", request)->User(), L"kim") << request;
    EXPECT_TRUE(Make("QD_PLMCreateMaterial", request)->Details().empty()) << request;
  }
}

}  // namespace
