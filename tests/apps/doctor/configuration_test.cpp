// View.json and PlmClient.json.
#include "case_name.h"
#include "doctor_fixture.h"

using doctor::Report;
using doctor::Status;

namespace {

using ConfigurationCheck = DoctorFixture;

/// A file with one mistake, and what is said of it.
struct Mistake {
  const char* name;
  const char* file;
  Status status;
  const wchar_t* text;
};

void PrintTo(const Mistake& mistake, std::ostream* stream) { *stream << mistake.name; }

/// A menu of one item, which has `members` beside the necessary ones.
std::string ViewWith(const std::string& members) {
  return R"({"name":"PLM","Menu":[{"name":"Search","ToolTip":"t","Hint":"h",)" + members + "}]}";
}

/// A menu of as many items as `count` says.
std::string ViewOf(int count) {
  std::string items;
  for (int item = 0; item < count; ++item) {
    items += std::string(item ? "," : "") +
             R"({"name":"Search","ToolTip":"t","Hint":"h","CallbackFunction":"PlmQuery",)"
             R"("EnableMethod":"EnablePlmQuery","ImageListIndex":6})";
  }
  return R"({"name":"PLM","Menu":[)" + items + "]}";
}

TEST_F(ConfigurationCheck, FindsNothingWrongInTheInstalledDefault) {
  const Report report = Check("configuration");
  ExpectHealthy(report);
  ExpectFinding(report, "configuration.view_file", Status::kOk, L"config\\View.json. Looked at: ");
  ExpectFinding(report, "configuration.client_file", Status::kOk, L"There is no PlmClient.json");
}

TEST_F(ConfigurationCheck, TellsAllPlacesAndWhichOneIsUsed) {
  const std::wstring name = L"config\\New TAVO SolidWorks AddOn\\View.json";
  m_folder.Write(L"all users\\TAVO\\" + name, ViewOf(1));
  const Report report = Check("configuration");
  ExpectFinding(report, "configuration.view_file", Status::kOk,
                L"Looked at: " + m_folder.Path(L"home\\" + name) + L" (missing), " +
                    m_folder.Path(L"all users\\TAVO\\" + name) + L" (used), ");
  ExpectFinding(report, "configuration.view_file", Status::kOk, L"config\\View.json (not needed).");
}

TEST_F(ConfigurationCheck, FindsThatThereIsNoViewAnywhere) {
  RegisterCopy();
  ExpectFinding(Check("configuration"), "configuration.view_file", Status::kFailed, L"There is no View.json");
}

TEST_F(ConfigurationCheck, DoesNotCheckItemsWithoutTheLibrary) {
  RegisterLibrary(L"C:\\windows\\system32\\version.dll");
  Configure(L"View.json", ViewOf(1));
  ExpectFinding(Check("configuration"), "configuration.view", Status::kNotApplicable,
                L"its items are not checked");
}

TEST_F(ConfigurationCheck, AllowsSixteenItemsAndNotMore) {
  Configure(L"View.json", ViewOf(16));
  ExpectHealthy(Check("configuration"));
  Configure(L"View.json", ViewOf(17));
  ExpectFinding(Check("configuration"), "configuration.view", Status::kFailed,
                L"\"Menu\" has 17 items; only the first 16 are added");
}

TEST_F(ConfigurationCheck, AllowsSchemasAndCommentsOfOneOwn) {
  std::string view = ViewOf(1);
  view.insert(1, R"("$schema":"schemas/View.schema.json","remarks of ours":"x",)");
  Configure(L"View.json", view);
  Configure(L"PlmClient.json", R"({"$schema":"schemas/PlmClient.schema.json","startTimeoutMs":5})");
  ExpectHealthy(Check("configuration"));
}

TEST_F(ConfigurationCheck, TellsEachMistakeOfAView) {
  Configure(L"View.json", ViewWith(R"("CallbackFunction":"x","EnableMethod":"y","ImageListIndex":99)"));
  EXPECT_EQ(Check("configuration").Count(Status::kFailed), 3u);
}

class ViewMistake : public DoctorFixture, public testing::WithParamInterface<Mistake> {};

TEST_P(ViewMistake, IsFound) {
  const std::string file = GetParam().file;
  Configure(L"View.json", file.starts_with("\"") ? ViewWith(file) : file);
  ExpectFinding(Check("configuration"), "configuration.view", GetParam().status, GetParam().text);
}

const Mistake kViewMistakes[] = {
    {"Syntax", "{\n  \"name\": \"PLM\",\n  \"Menu\": [}\n", Status::kFailed, L"line 3, column 12"},
    {"NoMenu", R"({"name":"PLM"})", Status::kFailed, L"Menu"},
    {"MenuWithANumber", R"({"name":"PLM","Menu":[1]})", Status::kFailed,
     L"[Menu] has an element that is no object"},
    {"NoObject", "[]", Status::kFailed, L"View.json"},
    {"UnknownCommand", R"("CallbackFunction":"PlmQuerry","EnableMethod":"EnablePlmQuery","ImageListIndex":6)",
     Status::kFailed,
     L"item 1 \"Search\": \"CallbackFunction\": \"PlmQuerry\" is not a method of the add-in"},
    {"EnableMethodAsCommand",
     R"("CallbackFunction":"EnablePlmQuery","EnableMethod":"EnablePlmQuery","ImageListIndex":6)",
     Status::kFailed, L"\"CallbackFunction\": \"EnablePlmQuery\" is an enable method, not a command"},
    {"UnknownEnableMethod",
     R"("CallbackFunction":"PlmQuery","EnableMethod":"EnableQuery","ImageListIndex":6)", Status::kFailed,
     L"\"EnableMethod\": \"EnableQuery\" is not a method of the add-in"},
    {"MethodOfEveryObject",
     R"("CallbackFunction":"Invoke","EnableMethod":"EnablePlmQuery","ImageListIndex":6)", Status::kFailed,
     L"\"Invoke\" is not a method of the add-in"},
    {"IconOutOfRange", R"("CallbackFunction":"PlmQuery","EnableMethod":"EnablePlmQuery","ImageListIndex":16)",
     Status::kFailed, L"\"ImageListIndex\": 16 is not the number of an icon, 0 to 15"},
    {"MissingMember", R"("EnableMethod":"EnablePlmQuery","ImageListIndex":6)", Status::kFailed,
     L"item 1 \"Search\": \"CallbackFunction\" is missing"},
    {"MisspeltMember", R"("CallBackFunction":"PlmQuery","EnableMethod":"EnablePlmQuery","ImageListIndex":6)",
     Status::kWarning, L"item 1 \"Search\": \"CallBackFunction\" is not known; \"CallbackFunction\" is"},
    {"MisspeltMenu", R"({"name":"PLM","Menus":[]})", Status::kWarning,
     L"\"Menus\" is not known; \"Menu\" is"},
};
INSTANTIATE_TEST_SUITE_P(, ViewMistake, testing::ValuesIn(kViewMistakes), CaseName<Mistake>);

class ClientMistake : public DoctorFixture, public testing::WithParamInterface<Mistake> {};

TEST_P(ClientMistake, IsFound) {
  Configure(L"PlmClient.json", GetParam().file);
  ExpectFinding(Check("configuration"), "configuration.client", GetParam().status, GetParam().text);
}

const Mistake kClientMistakes[] = {
    {"Syntax", "{\n\"pipe\": \"a\",\n}", Status::kFailed, L"line 3, column 1"},
    {"NoObject", "[]", Status::kFailed, L"PlmClient.json: the root is not an object."},
    {"PipeIsANumber", R"({"pipe":1})", Status::kFailed, L"\"pipe\" is not a string."},
    {"TimeIsAText", R"({"startTimeoutMs":"1"})", Status::kFailed,
     L"\"startTimeoutMs\" is not a whole number of milliseconds"},
    {"UnknownMember", R"({"other":1})", Status::kFailed, L"\"other\" is not known"},
    {"MisspeltMember", R"({"Client":"C:\\a.exe"})", Status::kWarning,
     L"\"Client\" is not known; \"client\" is."},
};
INSTANTIATE_TEST_SUITE_P(, ClientMistake, testing::ValuesIn(kClientMistakes), CaseName<Mistake>);

}  // namespace
