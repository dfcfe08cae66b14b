// Property sets of other programs: none, without the user-defined section, with several, damaged.
#include <windows.h>

#include "files/property_set_format.h"
#include "files/property_set_section.h"
#include "other_programs_fixture.h"
#include "property_set_stream.h"

namespace {

using namespace cad_host::property_set;

class ForeignPropertySetTest : public OtherProgramsTest {
 protected:
  /// Adds a property to the file, saves it, and checks that nothing beside the property set changes.
  void AddMaterial(const std::wstring& path) {
    const auto before = ContentBesideProperties(path);
    const auto document = Host().Open(path);
    document->model.properties.push_back({.name = L"材料", .text = L"钢"});
    Host().Save(*document);
    Host().Close(document);
    EXPECT_EQ(Differences(before, ContentBesideProperties(path)), Strings());
  }
};

constexpr const char* kSteelByLibgsf = "\t= \"\\351\\222\\242\"\n";

TEST_F(ForeignPropertySetTest, IsMadeIfThereWasNone) {
  const std::wstring path = MakeCompound({{L"Header", "head"}, {L"Geometry\\Edges", std::string(5000, 'e')}});
  EXPECT_TRUE(Host().Open(path)->model.properties.empty());

  AddMaterial(path);

  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "材料"), kSteelByLibgsf);
}

TEST_F(ForeignPropertySetTest, IsMadeInAStreamWithoutBytes) {
  const std::wstring path = MakeCompound({{L"Header", "head"}, {kPropertySet, ""}});
  EXPECT_TRUE(Host().Open(path)->model.properties.empty());

  AddMaterial(path);

  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "材料"), kSteelByLibgsf);
}

/// The user-defined section of a file.
std::string UserDefinedSectionOf(const std::wstring& path) {
  const std::string set = CompoundContent(path)[kPropertySet].bytes;
  for (const SectionBytes& section : SectionsOf(set)) {
    if (section.id == kUserDefined) return std::string(section.bytes);
  }
  return {};
}

TEST_F(ForeignPropertySetTest, WithoutAUserDefinedSectionGetsOne) {
  const std::string set = CompoundContent(ChinesePart())[kPropertySet].bytes;
  const SectionBytes summary = SectionsOf(set).at(0);
  ASSERT_NE(summary.id, kUserDefined);
  const std::wstring path = MakeCompound(
      {{kPropertySet, StreamOf(std::vector{std::pair{summary.id, std::string(summary.bytes)}})}});
  EXPECT_TRUE(Host().Open(path)->model.properties.empty());

  AddMaterial(path);

  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "材料 dc:publisher"),
            "材料: " + std::string(kSteelByLibgsf) + "dc:publisher: \t= \"no custom property\"\n");
  const std::string after = CompoundContent(path)[kPropertySet].bytes;
  EXPECT_TRUE(SectionsOf(after).at(0).bytes.starts_with(summary.bytes)) << "only padding follows";
}

TEST_F(ForeignPropertySetTest, KeepsTheBytesOfANameThatIsNotWellFormed) {
  // In this code page the last byte is the first one of a character of two; the other one is missing.
  const std::string name = Name("Bad\x81");
  const ById names = {{2, name}};
  const std::wstring path = MakeCompound({{kPropertySet, StreamOf({{kDictionaryId, Dictionary(names)},
                                                                   {kCodePageId, CodePageValue(932)},
                                                                   {2, Number(kTypeNumber) + Number(7)}})}});
  const auto document = Host().Open(path);
  ASSERT_EQ(document->model.properties.size(), 1u);
  document->model.properties.push_back({.name = L"Added", .text = L"1"});

  Host().Save(*document);

  const std::string set = CompoundContent(path)[kPropertySet].bytes;
  EXPECT_TRUE(ValuesOf(set).at(kDictionaryId).starts_with(Dictionary({{2, name}, {3, Name("Added")}})));
}

TEST_F(ForeignPropertySetTest, ShowsAndSavesThePropertiesOfSeveralUserDefinedSections) {
  const std::wstring path = MakeCompound(
      {{kPropertySet, StreamOf(std::vector{std::pair{kUserDefined, UserDefinedSectionOf(ChinesePart())},
                                           {kUserDefined, UserDefinedSectionOf(WesternAssembly())}})}});

  const auto document = Host().Open(path);
  EXPECT_EQ(document->model.properties.size(), 8u) << "equal names count once";
  SetText(*document, L"材料", L"铝");
  SetText(*document, L"Größe", L"Ø 9");
  Host().Save(*document);

  const Texts texts = TextsOf(cad_host::ReadModelFile(path).properties);
  EXPECT_EQ(texts.at(L"材料"), L"铝");
  EXPECT_EQ(texts.at(L"Größe"), L"Ø 9");
  EXPECT_EQ(texts.at(L"Whole"), L"-12");
  EXPECT_EQ(texts.size(), 8u);
}

TEST_F(ForeignPropertySetTest, IsRefusedWithTheNameOfTheFileIfItIsCutOff) {
  const std::string set = CompoundContent(ChinesePart())[kPropertySet].bytes;
  const std::wstring path = MakeCompound({{kPropertySet, set.substr(0, set.size() / 2)}});

  const std::wstring error = ErrorOfOpening(path);

  EXPECT_TRUE(error.starts_with(path + L": custom properties")) << testing::PrintToString(error);
}

TEST_F(ForeignPropertySetTest, IsRefusedInAnUnknownCodePage) {
  const ById names = {{2, Name("A")}, {3, Name("B")}};
  const std::wstring path = MakeCompound({{kPropertySet, StreamOf({{kDictionaryId, Dictionary(names)},
                                                                   {kCodePageId, CodePageValue(12345)},
                                                                   {2, Number(kTypeNumber) + Number(7)},
                                                                   {3, Number(kTypeNumber) + Number(8)}})}});

  const std::wstring error = ErrorOfOpening(path);

  EXPECT_TRUE(error.starts_with(path + L": its code page 12345 is unknown")) << testing::PrintToString(error);
}

}  // namespace
