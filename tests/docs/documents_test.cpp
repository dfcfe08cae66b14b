// The documents, held beside the sources of what they tell.
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path kProject = PROJECT_FOLDER;
const fs::path kDocuments = kProject / "docs";
const fs::path kAddIn = kProject / "apps/addins/solidworks_add_in";

std::string Read(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Each match of `expression` in `text`.
std::vector<std::smatch> FindAll(const std::string& text, const std::string& expression) {
  const std::regex compiled(expression);
  return {std::sregex_iterator(text.begin(), text.end(), compiled), {}};
}

/// The last part of a name such as `CSolidWorksAddIn::PlmLogin`; that of another class stays whole.
std::string WithoutAddInClass(const std::string& function) {
  const std::string add_in = "CSolidWorksAddIn::";
  return function.starts_with(add_in) ? function.substr(add_in.size()) : function;
}

using LinesOfFunctions = std::map<std::string, std::set<int>>;

/// What the table of log sites says.
LinesOfFunctions SitesInTheSource() {
  std::string source = Read(kAddIn / "diagnostics/log_sites.h");
  std::erase(source, '\n');
  LinesOfFunctions lines;
  std::string function;
  for (const std::smatch& found : FindAll(
           source, R"re(kFunction = "([^"]+)"|AddIn\((?:kFunction|"([^"]+)"), *(\d+)|Drawing\((\d+))re")) {
    if (found[1].matched) function = found[1];
    if (found[3].matched) {
      const std::string own = found[2].matched ? std::string(found[2]) : function;
      lines[WithoutAddInClass(own)].insert(std::stoi(found[3]));
    }
    if (found[4].matched) lines["CDrawingHelper::InsertChildFile"].insert(std::stoi(found[4]));
  }
  return lines;
}

/// What the tables of the page say: rows with a function, or none for that of the row above, and lines.
LinesOfFunctions SitesInThePage(const std::string& page) {
  LinesOfFunctions lines;
  std::string function;
  for (const std::smatch& row : FindAll(page, R"re(\n\| (?:`(\w+(?:::\w+)?)` )?\| ([0-9, ]+) \|)re")) {
    if (row[1].matched) function = row[1];
    const std::string numbers = row[2];
    for (const std::smatch& number : FindAll(numbers, R"re(\d+)re")) {
      lines[function].insert(std::stoi(number[0]));
    }
  }
  return lines;
}

TEST(LogLines, AreAllExplained) {
  LinesOfFunctions explained = SitesInThePage(Read(kDocuments / "log-lines.md"));
  explained["CDrawingHelper::InsertChildFile"].insert(69);  // told below the table: it is no failure
  const LinesOfFunctions written = SitesInTheSource();
  ASSERT_GT(written.size(), 10U);
  EXPECT_EQ(explained, written);
}

TEST(LogLines, ExplainAllCodesOfThePlatform) {
  const std::string page = Read(kDocuments / "log-lines.md");
  const std::string codes = Read(kProject / "platform/base/include/base/platform_codes.h");
  const auto found = FindAll(codes, R"re(0x(A3[0-9A-F]{6})\))re");
  ASSERT_FALSE(found.empty());
  for (const std::smatch& code : found) {
    std::string digits = code[1];
    std::ranges::transform(digits, digits.begin(), [](unsigned char c) { return std::tolower(c); });
    EXPECT_NE(page.find("`0x" + digits + "`"), std::string::npos) << digits;
  }
}

TEST(UsersGuide, HasASectionWithAPictureForEachCommand) {
  const std::string guide = Read(kDocuments / "users-guide.md");
  rapidjson::Document view;
  view.Parse(Read(kAddIn / "resources/config/View.json").c_str());
  const auto menu = view["Menu"].GetArray();
  ASSERT_EQ(menu.Size(), 14U);
  for (const auto& item : menu) {
    const std::string heading = std::string("\n### ") + item["name"].GetString() + "\n\n![";
    EXPECT_NE(guide.find(heading), std::string::npos) << heading;
  }
}

TEST(ClientGuide, HasARowForEachCommandOfTheClient) {
  const auto names = [](const std::string& text, const std::string& expression) {
    std::multiset<std::string> found;
    for (const std::smatch& name : FindAll(text, expression)) found.insert(name[1]);
    return found;
  };
  const auto commands = names(Read(kAddIn / "commands/plm_commands.h"), R"re(L"(QD_\w+)")re");
  EXPECT_EQ(commands.size(), 14U);
  EXPECT_EQ(names(Read(kDocuments / "plm-client-guide.md"), R"re(\n\| `(QD_\w+)` \|)re"), commands);
}

/// Each document that a reader may open.
std::vector<fs::path> Documents() {
  std::vector<fs::path> found;
  for (const auto& entry : fs::recursive_directory_iterator(kDocuments)) found.push_back(entry.path());
  for (const auto& entry : fs::recursive_directory_iterator(kProject / "examples")) {
    found.push_back(entry.path());
  }
  for (const auto& entry : fs::directory_iterator(kProject)) found.push_back(entry.path());
  std::erase_if(found, [](const fs::path& path) { return path.extension() != ".md"; });
  return found;
}

/// The name by which a link finds a heading: small letters and digits, blanks as hyphens.
std::string AnchorOf(const std::string& heading) {
  std::string anchor;
  for (const unsigned char c : heading) {
    if (std::isalnum(c) || c == '-' || c == '_') anchor += static_cast<char>(std::tolower(c));
    if (c == ' ') anchor += '-';
  }
  return anchor;
}

bool HasHeading(const fs::path& document, const std::string& anchor) {
  const std::string text = Read(document);
  const auto headings = FindAll(text, R"re((?:^|\n)#+ ([^\n]+))re");
  return std::ranges::any_of(headings,
                             [&](const std::smatch& found) { return AnchorOf(found[1]) == anchor; });
}

TEST(Documents, LinkOnlyToWhatIsThere) {
  const std::vector<fs::path> documents = Documents();
  ASSERT_GT(documents.size(), 10U);
  for (const fs::path& document : documents) {
    const std::string text = Read(document);
    for (const std::smatch& link : FindAll(text, R"re(\]\(([^)#: ]*)(?:#([^) ]+))?\))re")) {
      const std::string path = link[1];
      const fs::path target = path.empty() ? document : document.parent_path() / path;
      ASSERT_TRUE(fs::exists(target)) << document << " links to " << path;
      if (link[2].matched) {
        EXPECT_TRUE(HasHeading(target, link[2])) << document << " links to " << path << "#" << link[2];
      }
    }
  }
}

TEST(Documents, HaveExamplesOfJsonThatAreJson) {
  std::size_t count = 0;
  for (const fs::path& document : Documents()) {
    const std::string text = Read(document);
    for (const std::smatch& example : FindAll(text, R"re(\n```json\n([^`]*)\n```)re")) {
      rapidjson::Document parsed;
      std::string json = example[1];
      if (json.starts_with("  ")) json = "{" + json.substr(0, json.rfind(',')) + "}";  // a line of an object
      EXPECT_FALSE(parsed.Parse(json.c_str()).HasParseError()) << document << ":\n" << json;
      ++count;
    }
  }
  EXPECT_GT(count, 10U);
}

}  // namespace
