// Files that other programs wrote: compound files of libgsf (fixtures/other_programs.c and `gsf createole`)
// and files in other formats.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <map>

#include "base/unique_handle.h"
#include "compound_content.h"
#include "files/property_set_format.h"
#include "host_fixture.h"
#include "unix_program.h"

namespace {

using cad_host::FileKind;
using cad_host::HostError;
using Texts = std::map<std::wstring, std::wstring>;

constexpr const wchar_t* kPropertySet = L"\005DocumentSummaryInformation";
constexpr const wchar_t* kPartText = L"part.sldprt";

Texts TextsOf(const cad_host::CustomProperties& properties) {
  Texts texts;
  for (const auto& property : properties) texts[property.name] = property.text;
  return texts;
}

void SetText(cad_host::Document& document, const std::wstring& name, const std::wstring& text) {
  for (auto& property : document.model.properties) {
    if (property.name == name) property.text = text;
  }
}

class OtherProgramsTest : public HostTest {
 protected:
  std::wstring CopyFixture(const std::wstring& fixture, const std::wstring& name) {
    std::wstring path = m_folder.Path(name);
    WriteFileBytes(path, ReadFileBytes(FIXTURES_FOLDER L"/" + fixture));
    return path;
  }
  std::wstring ChinesePart() { return CopyFixture(L"page936.sldprt", kPartText); }
  std::wstring WesternAssembly() { return CopyFixture(L"page1252.sldasm", L"top.sldasm"); }

  /// A part that `gsf createole` makes of files; the names of the files are those of the streams.
  std::wstring MakeCompound(const std::map<std::wstring, std::string>& streams) {
    for (const auto& [name, bytes] : streams) {
      // Windows files cannot have the control character.
      const std::wstring file = name == kPropertySet ? L"@" + name.substr(1) : name;
      m_folder.Write(L"streams\\" + file, bytes);
    }
    RunShell(m_folder,
             "cd streams && for file in @*; do [ ! -e \"$file\" ] || mv \"$file\" \"$(printf "
             "'\\005')${file#@}\"; done; gsf createole ../part.sldprt * 2>&1");
    return m_folder.Path(kPartText);
  }

  /// What libgsf reads: "NAME: VALUE" for each name.
  std::string PropertiesByLibgsf(const std::string& file, const std::string& names) {
    return RunShell(m_folder, "export LC_ALL=C.UTF-8; gsf props " + file + " " + names);
  }

  /// @return the message of the error that saving causes.
  std::wstring ErrorOfSaving(cad_host::Document& document, const std::wstring& path = {}) {
    try {
      Host().Save(document, path);
    } catch (const HostError& error) {
      return error.Message();
    }
    return L"no error";
  }

  std::vector<std::wstring> Files() const {
    std::vector<std::wstring> files = m_folder.List();
    std::erase_if(files, [](const std::wstring& name) { return name.find(L".sld") == std::wstring::npos; });
    return files;
  }
};

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
  for (const std::wstring& path : {ChinesePart(), WesternAssembly()}) {
    auto before = CompoundContent(path);
    ASSERT_GE(before.size(), 9u);
    const auto document = Host().Open(path);
    for (const wchar_t* const name : {L"材料", L"Größe", L"Plain"}) SetText(*document, name, L"new");
    SetText(*document, L"Whole", L"13");

    Host().Save(*document);
    Host().Close(document);

    auto after = CompoundContent(path);
    EXPECT_NE(after[kPropertySet], before[kPropertySet]);
    before.erase(kPropertySet);
    after.erase(kPropertySet);
    EXPECT_TRUE(after == before);
    const Texts texts = TextsOf(cad_host::ReadModelFile(path).properties);
    EXPECT_EQ(texts.at(L"Plain"), L"new");
    EXPECT_EQ(texts.at(L"Whole"), L"13");
    EXPECT_EQ(texts.at(L"Fraction"), L"1.5");
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

  EXPECT_TRUE(CompoundContent(path) == before);
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

  EXPECT_TRUE(CompoundContent(path) == before);
  EXPECT_TRUE(CompoundContent(m_folder.Path(L"other.sldprt")) == before);
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

TEST_F(OtherProgramsTest, GetsAPropertySetIfThereWasNone) {
  const std::wstring path = MakeCompound({{L"Header", "head"}, {L"Geometry\\Edges", std::string(5000, 'e')}});
  auto before = CompoundContent(path);
  const auto document = Host().Open(path);
  EXPECT_TRUE(document->model.properties.empty());
  document->model.properties.push_back({.name = L"材料", .text = L"钢"});

  Host().Save(*document);
  Host().Close(document);

  auto after = CompoundContent(path);
  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "材料"), "\t= \"\\351\\222\\242\"\n");
  EXPECT_EQ(after.erase(kPropertySet), 1u);
  EXPECT_TRUE(after == before);
}

TEST_F(OtherProgramsTest, AStreamNamedModelOfAnotherProgramStaysAsItIs) {
  const std::wstring path = MakeCompound({{L"Model", std::string("\0\xff\x01 binary\n", 11)}});
  const auto document = Host().Open(path);
  EXPECT_EQ(document->model.kind, FileKind::kCompound);
  document->model.properties.push_back({.name = L"A", .text = L"1"});
  Host().Save(*document);
  EXPECT_EQ(CompoundContent(path)[L"Model"], std::string("\0\xff\x01 binary\n", 11));

  document->model.quantities[L"SW-Mass"] = L"1";
  EXPECT_EQ(ErrorOfSaving(*document), path +
                                          L": cannot be saved with components or quantities: another "
                                          L"program's \"Model\" is in the file");
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
  const auto after = CompoundContent(path);
  for (const auto& [name, bytes] : before) EXPECT_EQ(after.at(name), bytes);
}

/// A stream with the user-defined section of `set` twice; in the second one, "old" stands for "new".
std::string WithTwoUserDefinedSections(const std::string& set, std::string second) {
  using namespace cad_host::property_set;
  const auto number = [](std::uint32_t value) {
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
  };
  std::uint32_t place = 0;
  std::memcpy(&place, set.data() + kSectionPlaces + kSectionPlaceSize + sizeof(SectionId), sizeof place);
  const std::string first = set.substr(place);
  std::memcpy(&place, second.data() + kSectionPlaces + kSectionPlaceSize + sizeof(SectionId), sizeof place);
  second = second.substr(place);
  const std::string id(kUserDefined.begin(), kUserDefined.end());
  const auto begin = static_cast<std::uint32_t>(kSectionPlaces + 2 * kSectionPlaceSize);
  return set.substr(0, kSectionCount) + number(2) + id + number(begin) + id +
         number(begin + static_cast<std::uint32_t>(first.size())) + first + second;
}

TEST_F(OtherProgramsTest, ShowsAndSavesThePropertiesOfSeveralUserDefinedSections) {
  const std::string chinese = CompoundContent(ChinesePart())[kPropertySet];
  const std::string western = CompoundContent(WesternAssembly())[kPropertySet];
  const std::wstring path = MakeCompound({{kPropertySet, WithTwoUserDefinedSections(chinese, western)}});

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

TEST_F(OtherProgramsTest, ADamagedPropertySetIsRefusedWithTheName) {
  const std::string set = CompoundContent(ChinesePart())[kPropertySet];
  const std::wstring path = MakeCompound({{kPropertySet, set.substr(0, set.size() / 2)}});

  try {
    Host().Open(path);
    ADD_FAILURE() << "opened";
  } catch (const HostError& error) {
    EXPECT_TRUE(error.Message().starts_with(path + L": custom properties"))
        << testing::PrintToString(error.Message());
  }
}

TEST_F(OtherProgramsTest, AFileInAnotherFormatOpensWithoutPropertiesAndIsNotSaved) {
  for (const auto& [name, type] :
       {std::pair{L"a.sldprt", swDocPART}, {L"b.sldasm", swDocASSEMBLY}, {L"c.slddrw", swDocDRAWING}}) {
    const std::wstring path = m_folder.Write(name, "PK\3\4 another format");
    const auto document = Host().Open(path);
    EXPECT_EQ(document->Type(), type);
    EXPECT_EQ(document->model.kind, FileKind::kOpaque);
    EXPECT_TRUE(document->model.properties.empty());
    EXPECT_TRUE(document->components.empty());

    for (const std::wstring& target : {std::wstring(), m_folder.Path(std::wstring(L"copy-") + name)}) {
      EXPECT_EQ(ErrorOfSaving(*document, target),
                path + L": cannot be saved, because it is not a compound file: this host cannot change it");
    }
    EXPECT_EQ(ReadFileBytes(path), "PK\3\4 another format");
  }
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"a.sldprt", L"b.sldasm", L"c.slddrw"}));
}

TEST_F(OtherProgramsTest, AFileInAnotherFormatCanBeAComponent) {
  const auto assembly = Host().New(swDocASSEMBLY);
  const auto component = Host().AddComponent(*assembly, m_folder.Write(L"a.sldprt", "first"));
  const long revision = component->loaded_revision;
  m_folder.Write(L"b.sldprt", "second");

  EXPECT_NE(Host().AddComponent(*assembly, m_folder.Path(L"b.sldprt"))->loaded_revision, revision);
  EXPECT_THROW(Host().AddComponent(*assembly, m_folder.Write(L"a.txt", "first")), HostError);
}

class SavingTest : public OtherProgramsTest {};

TEST_F(SavingTest, AFileThatCannotBeReplacedStaysAsItWas) {
  const std::wstring path = ChinesePart();
  const std::string before = ReadFileBytes(path);
  const auto document = Host().Open(path);
  SetText(*document, L"Plain", L"new");
  {
    // Another program reads the file and does not let it be replaced.
    const UniqueHandle reader = OwnHandle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    const std::wstring error = ErrorOfSaving(*document);
    EXPECT_TRUE(error.starts_with(path + L": cannot write: error ")) << testing::PrintToString(error);
  }
  EXPECT_EQ(ReadFileBytes(path), before);
  EXPECT_EQ(Files(), std::vector<std::wstring>{kPartText}) << "the new file is removed";

  EXPECT_EQ(ErrorOfSaving(*document), L"no error");
  EXPECT_EQ(Files(), std::vector<std::wstring>{kPartText});
}

TEST_F(SavingTest, AReadOnlyFileIsNotReplacedButCanBeSavedUnderAnotherName) {
  const std::wstring path = ChinesePart();
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  const auto document = Host().Open(path);
  SetText(*document, L"Plain", L"new");

  EXPECT_TRUE(ErrorOfSaving(*document).starts_with(path + L": cannot write, the file is read-only"));
  EXPECT_EQ(ErrorOfSaving(*document, m_folder.Path(L"copy.sldprt")), L"no error");

  EXPECT_EQ(TextsOf(cad_host::ReadModelFile(m_folder.Path(L"copy.sldprt")).properties).at(L"Plain"), L"new");
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SavingTest, AFileOfThisHostKeepsStreamsOfOtherPrograms) {
  const std::wstring path = MakeCompound({{L"Model", "part\t1\n"}, {L"Notes", "of another program"}});
  const auto document = Host().Open(path);
  EXPECT_EQ(document->model.kind, FileKind::kModel);
  document->model.properties = {{.name = L"Number", .text = L"1.50", .type = swCustomInfoNumber}};

  Host().Save(*document);

  EXPECT_EQ(CompoundContent(path)[L"Notes"], "of another program");
  const cad_host::ModelFile saved = cad_host::ReadModelFile(path);
  EXPECT_EQ(saved.revision, 2);
  EXPECT_EQ(saved.properties.at(0).text, L"1.50");
}

}  // namespace
