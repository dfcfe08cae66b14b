// The list of what is linked into the programs, made by scripts/licences.
#include <gtest/gtest.h>

#include <windows.h>

#include <rapidjson/document.h>
// After it.
#include <algorithm>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>

#include "program_folder.h"
#include "temp_folder.h"
#include "unix_program.h"

namespace {

constexpr const char* kAddIn = "SPDXRef-solidworks-add-in.dll";
constexpr const char* kVaultProgram = "SPDXRef-plm-client-window.exe";

class Licences : public testing::Test {
 protected:
  /// Makes the list. @return the program's output. @throws std::runtime_error with the output if it fails.
  std::string Make(const std::string& arguments) const {
    return RunShell(m_folder, "python3 -B " + UnixPath(SourceFile(L"scripts\\licences\\licences.py")) +
                                  " --build " + UnixPath(ProgramFolder() + L"\\..") + " " + arguments +
                                  " 2>&1");
  }

  std::string ErrorOf(const std::string& arguments) const {
    try {
      return "no error: " + Make(arguments);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
  }

  /// The list of all programs.
  const rapidjson::Document& List() {
    Make("list.json");
    EXPECT_FALSE(m_list.Parse(m_folder.Read(L"list.json").c_str()).HasParseError());
    return m_list;
  }

  TempFolder m_folder;

 private:
  rapidjson::Document m_list;
};

std::string Text(const rapidjson::Value& object, const char* member) {
  const auto found = object.FindMember(member);
  return found != object.MemberEnd() && found->value.IsString() ? found->value.GetString() : "";
}

/// The ids of what an element contains.
std::set<std::string> ContentOf(const rapidjson::Value& list, const std::string& id) {
  std::set<std::string> content;
  for (const auto& relation : list["relationships"].GetArray()) {
    if (Text(relation, "spdxElementId") == id && Text(relation, "relationshipType") == "CONTAINS") {
      content.insert(Text(relation, "relatedSpdxElement"));
    }
  }
  return content;
}

}  // namespace

TEST_F(Licences, NameWhatIsInTheAddInAndInASimulator) {
  const auto& list = List();
  EXPECT_EQ(ContentOf(list, kAddIn), (std::set<std::string>{"SPDXRef-MinGW-w64-runtime", "SPDXRef-RapidJSON",
                                                            "SPDXRef-libstdc-and-libgcc", "SPDXRef-log4cplus",
                                                            "SPDXRef-winpthreads"}));
  EXPECT_TRUE(ContentOf(list, kVaultProgram).contains("SPDXRef-SQLite"));
}

// The members that SPDX 2.3 wants, in its forms.
TEST_F(Licences, AreAListInTheFormOfSpdx) {
  const auto& list = List();
  EXPECT_EQ(Text(list, "spdxVersion"), "SPDX-2.3");
  EXPECT_EQ(Text(list, "dataLicense"), "CC0-1.0");
  EXPECT_EQ(Text(list, "SPDXID"), "SPDXRef-DOCUMENT");
  EXPECT_FALSE(Text(list, "name").empty());
  EXPECT_TRUE(std::regex_match(Text(list, "documentNamespace"), std::regex("[a-z]+:[^#\\s]+")));
  EXPECT_TRUE(std::regex_match(Text(list["creationInfo"], "created"),
                               std::regex("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ")));
  EXPECT_EQ(std::string(list["creationInfo"]["creators"][0].GetString()), "Tool: licences.py");

  std::set<std::string> ids{"SPDXRef-DOCUMENT"};
  for (const auto& package : list["packages"].GetArray()) {
    const std::string id = Text(package, "SPDXID");
    EXPECT_TRUE(std::regex_match(id, std::regex("SPDXRef-[A-Za-z0-9.-]+"))) << id;
    EXPECT_TRUE(ids.insert(id).second) << id << " twice";
    EXPECT_EQ(Text(package, "downloadLocation"), "NOASSERTION") << id;
    for (const char* const member :
         {"name", "versionInfo", "licenseConcluded", "licenseDeclared", "copyrightText"}) {
      EXPECT_FALSE(Text(package, member).empty()) << id << " without " << member;
    }
    EXPECT_FALSE(package["filesAnalyzed"].GetBool()) << id;
  }
  for (const auto& relation : list["relationships"].GetArray()) {
    EXPECT_TRUE(ids.contains(Text(relation, "spdxElementId"))) << Text(relation, "spdxElementId");
    EXPECT_TRUE(ids.contains(Text(relation, "relatedSpdxElement"))) << Text(relation, "relatedSpdxElement");
  }
}

TEST_F(Licences, OfOneProgramAreTheSameEachTime) {
  Make("list.json solidworks_add_in.dll");
  const std::string list = m_folder.Read(L"list.json"), texts = m_folder.Read(L"licences.txt");
  Make("list.json solidworks_add_in.dll");
  EXPECT_EQ(m_folder.Read(L"list.json"), list);
  EXPECT_EQ(m_folder.Read(L"licences.txt"), texts);
  EXPECT_EQ(list.find("SQLite"), std::string::npos);
  EXPECT_NE(texts.find("Apache License\n"), std::string::npos);
  EXPECT_NE(texts.find("GCC RUNTIME LIBRARY EXCEPTION"), std::string::npos);
}

TEST_F(Licences, AreRefusedIfTheTableLacksAnArchiveOrAHeader) {
  m_folder.Write(L"table.json", R"([{"name":"all but one","package":"googletest","licence":"MIT",
      "archives":["/usr/*","*/liblog4cplusSU.a","*/libstdc++.a","*/libgtest.a","*/libminizip.a"],
      "headers":["[!r]*"]}])");
  const std::string error = ErrorOf("--table table.json list.json");
  EXPECT_NE(error.find("table.json: no entry for build/deps/windows/lib/libsqlite3.a, which is in "),
            std::string::npos)
      << error;
  EXPECT_NE(error.find("table.json: no entry for rapidjson, which is in "), std::string::npos);
  EXPECT_EQ(error.find("libgtest"), std::string::npos);
  EXPECT_FALSE(m_folder.Exists(L"list.json"));
}

TEST_F(Licences, OfAProgramThatIsMissingAreRefused) {
  EXPECT_NE(ErrorOf("list.json none.exe").find("has no program none.exe"), std::string::npos);
}
