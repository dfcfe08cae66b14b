// Properties of compound files that other programs wrote: what the host shows, and what it saves.
#include <windows.h>

#include "other_programs_fixture.h"

namespace {

using cad_host::FileKind;

TEST_F(OtherProgramsTest, ShowsThePropertiesOfAChineseCodePage) {
  const auto document = Host().Open(ChinesePart());

  EXPECT_EQ(document->Type(), swDocPART);
  EXPECT_EQ(document->model.kind, FileKind::kCompound);
  EXPECT_FALSE(document->changed);
  EXPECT_EQ(TextsOf(document->model.properties), (Texts{{L"材料", L"钢"},
                                                        {L"Plain", L"text"},
                                                        {L"Weight", L"\"SW-Mass@bolt.SLDPRT\""},
                                                        {L"Whole", L"-12"},
                                                        {L"Fraction", L"1.5"},
                                                        {L"Checked", L"Yes"},
                                                        {L"Date", L"2024-05-31"}}));
}

TEST_F(OtherProgramsTest, ShowsThePropertiesOfAWesternCodePageAndNoComponents) {
  const auto document = Host().Open(WesternAssembly());

  EXPECT_EQ(document->Type(), swDocASSEMBLY);
  EXPECT_TRUE(document->components.empty());
  const Texts texts = TextsOf(document->model.properties);
  EXPECT_EQ(texts.at(L"Größe"), L"Ø 8 µm");
  EXPECT_EQ(texts.at(L"Plain"), L"text");
}

TEST_F(OtherProgramsTest, SavesChangedPropertiesAndKeepsEveryOtherStream) {
  for (const auto& [path, spelled] : {std::pair{ChinesePart(), L"材料"}, {WesternAssembly(), L"Größe"}}) {
    const auto before = CompoundContent(path);
    ASSERT_GE(before.size(), 10u);
    const auto document = Host().Open(path);
    Texts expected = TextsOf(document->model.properties);
    for (const auto& [name, text] :
         {std::pair{spelled, L"new"}, {L"Plain", L"new, too"}, {L"Whole", L"13"}}) {
      ASSERT_TRUE(expected.contains(name));
      expected[name] = text;
      SetText(*document, name, text);
    }

    Host().Save(*document);
    Host().Close(document);

    auto after = CompoundContent(path);
    EXPECT_NE(after[kPropertySet].bytes, before.at(kPropertySet).bytes);
    after[kPropertySet] = before.at(kPropertySet);
    EXPECT_EQ(Differences(before, after), Strings());
    EXPECT_EQ(TextsOf(cad_host::ReadModelFile(path).properties), expected);
  }
}

TEST_F(OtherProgramsTest, LibgsfReadsWhatWasSaved) {
  const auto document = Host().Open(ChinesePart());
  SetText(*document, L"材料", L"铝");
  SetText(*document, L"Plain", L"Ø 8");  // not in code page 936
  Host().Save(*document);

  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "材料 Plain Whole Checked dc:publisher Date"),
            "材料: \t= \"\\351\\223\\235\"\n"
            "Plain: \t= \"\\303\\230 8\"\n"
            "Whole: \t= -12\n"
            "Checked: \t= TRUE\n"
            "dc:publisher: \t= \"no custom property\"\n"
            "Date: \t= 2024-05-31T12:45:30Z\n");
}

TEST_F(OtherProgramsTest, SavingWithoutAChangeKeepsThePropertySetToo) {
  const std::wstring path = ChinesePart();
  const auto before = CompoundContent(path);
  const auto document = Host().Open(path);

  Host().Save(*document);
  Host().Close(document);

  EXPECT_EQ(Differences(before, CompoundContent(path)), Strings());
}

TEST_F(OtherProgramsTest, TheRevisionChangesWithTheContent) {
  const auto document = Host().Open(ChinesePart());
  const long opened = document->model.revision;
  Host().Save(*document);
  SetText(*document, L"Plain", L"new");
  Host().Save(*document);

  EXPECT_GE(opened, 0);
  EXPECT_NE(document->model.revision, opened);
  EXPECT_EQ(cad_host::ReadModelFile(document->path).revision, document->model.revision);
}

TEST_F(OtherProgramsTest, SavingUnderAnotherNameTakesEverythingAlong) {
  const std::wstring path = ChinesePart();
  const auto before = CompoundContent(path);
  const auto document = Host().Open(path);

  Host().Save(*document, m_folder.Path(L"other.sldprt"));
  Host().Close(document);

  EXPECT_EQ(Differences(before, CompoundContent(path)), Strings());
  EXPECT_EQ(Differences(before, CompoundContent(m_folder.Path(L"other.sldprt"))), Strings());
}

TEST_F(OtherProgramsTest, AddsAndRemovesProperties) {
  const auto document = Host().Open(ChinesePart());
  auto& properties = document->model.properties;
  properties.push_back({.name = L"供应商", .text = L"Müller"});
  std::erase_if(properties, [](const auto& property) { return property.name == L"Plain"; });
  const Texts expected = TextsOf(properties);

  Host().Save(*document);

  EXPECT_EQ(TextsOf(cad_host::ReadModelFile(document->path).properties), expected);
  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "供应商"), "\t= \"M\\303\\274ller\"\n");
}

TEST_F(OtherProgramsTest, RefusesANewNameThatTheCodePageCannotSpell) {
  const std::wstring path = WesternAssembly();
  const auto before = ReadFileBytes(path);
  const auto document = Host().Open(path);
  document->model.properties.push_back({.name = L"材料", .text = L"钢"});

  const std::wstring error = ErrorOfSaving(*document);

  EXPECT_TRUE(
      error.starts_with(path + L": its code page 1252 cannot spell the name of the property \"材料\""))
      << testing::PrintToString(error);
  EXPECT_EQ(ReadFileBytes(path), before);
  EXPECT_EQ(Files(), std::vector<std::wstring>{L"top.sldasm"});
}

TEST_F(OtherProgramsTest, AnAssemblyKeepsComponentsThatWereInserted) {
  const std::wstring path = WesternAssembly();
  auto before = CompoundContent(path);
  const auto document = Host().Open(path);
  Host().AddComponent(*document, ChinesePart());
  EXPECT_GE(document->components.at(0)->loaded_revision, 0);

  Host().Save(*document);
  Host().Close(document);

  const auto again = Host().Open(path);
  ASSERT_EQ(again->components.size(), 1u);
  EXPECT_EQ(again->components[0]->record.name, L"part-1");
  EXPECT_EQ(TextsOf(again->model.properties).at(L"Größe"), L"Ø 8 µm");
  auto after = CompoundContent(path);
  std::erase_if(after, [&](const auto& element) { return !before.contains(element.first); });
  EXPECT_EQ(Differences(before, after), Strings());
}

}  // namespace
