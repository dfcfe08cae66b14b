// The schemas beside what they describe: the default configuration, the add-in's methods and the documents.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "CJsonObject.h"
// After CJsonObject.h, which sets the library up.
#include <rapidjson/pointer.h>

#include "method_names.h"
#include "schema_files.h"

namespace {

using Names = std::set<std::string>;

std::filesystem::path SchemaFile(const std::string& name) {
  return DefaultConfiguration() / "schemas" / (name + ".schema.json");
}

/// The value at a place of a schema, and what it holds.
class SchemaPart {
 public:
  SchemaPart(const std::string& name, const char* pointer) {
    m_schema.CreateFromFile(SchemaFile(name).wstring());
    m_value = rapidjson::GenericPointer<CJsonObject::Value>(pointer).Get(*m_schema.Share());
    if (!m_value) throw std::runtime_error(name + " has no " + pointer);
  }

  Names Strings() const {
    Names strings;
    for (const auto& string : m_value->GetArray()) strings.insert(string.GetString());
    return strings;
  }

  Names Keys() const {
    Names keys;
    for (const auto& member : m_value->GetObject()) keys.insert(member.name.GetString());
    return keys;
  }

  /// The keys whose schemas lack a title or a description.
  Names Undescribed() const {
    Names keys;
    for (const auto& member : m_value->GetObject()) {
      for (const char* text : {"title", "description"}) {
        const auto found = member.value.FindMember(text);
        if (found == member.value.MemberEnd() || !found->value.IsString() ||
            !found->value.GetStringLength()) {
          keys.insert(member.name.GetString());
        }
      }
    }
    return keys;
  }

 private:
  CJsonObject m_schema;
  const CJsonObject::Value* m_value;
};

/// The first column of a page's table rows, from the heading `from` to the next one of any level.
Names DocumentedKeys(const std::string& page, const std::string& from) {
  std::ifstream lines(std::filesystem::path(DOCUMENTS) / page);
  Names keys;
  bool inside = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("#")) inside = line == from;
    std::smatch row;
    if (inside && std::regex_search(line, row, std::regex(R"(^\| `([^`]+)` \|)"))) keys.insert(row[1]);
  }
  return keys;
}

TEST(ViewSchemaContent, NamesTheMethodsOfTheAddIn) {
  const MethodNames named{SchemaPart("View", "/definitions/item/properties/CallbackFunction/enum").Strings(),
                          SchemaPart("View", "/definitions/item/properties/EnableMethod/enum").Strings()};
  EXPECT_EQ(named.commands.size(), 14u);
  EXPECT_EQ(named, DefinedMethods());
  EXPECT_EQ(named, DocumentedMethods());
}

TEST(ViewSchemaContent, DescribesTheDocumentedKeys) {
  Names described = SchemaPart("View", "/properties").Keys();
  described.merge(SchemaPart("View", "/definitions/item/properties").Keys());
  EXPECT_EQ(described, DocumentedKeys("view-json.md", "## Keys"));
  EXPECT_EQ(SchemaPart("View", "/properties").Undescribed(), Names());
  EXPECT_EQ(SchemaPart("View", "/definitions/item/properties").Undescribed(), Names());
}

TEST(ViewSchemaContent, RequiresEveryKeyOfAnItem) {
  EXPECT_EQ(SchemaPart("View", "/definitions/item/required").Strings(),
            SchemaPart("View", "/definitions/item/properties").Keys());
}

TEST(PlmClientSchemaContent, DescribesTheDocumentedMembers) {
  EXPECT_EQ(SchemaPart("PlmClient", "/properties").Keys(),
            DocumentedKeys("plm-client-json.md", "## Members"));
  EXPECT_EQ(SchemaPart("PlmClient", "/properties").Undescribed(), Names());
}

TEST(DefaultView, IsTakenByTheSchemaThatItNames) {
  const std::filesystem::path view = DefaultConfiguration() / "View.json";
  CJsonObject object;
  object.CreateFromFile(view.wstring());
  const std::filesystem::path schema = DefaultConfiguration() / object.GetStringValue(L"$schema");
  ASSERT_EQ(schema.filename(), "View.schema.json");
  const SchemaFiles files;
  files.Write("View.json", TextOf(view));
  EXPECT_EQ(files.Judge(schema), (std::map<std::string, std::string>{{"View.json", ""}}));
}

}  // namespace
