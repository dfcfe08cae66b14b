// Compound files of other programs of every kind keep all that is not a property: many sectors, large
// sectors, classes, state bits and times.
#include <windows.h>

#include <ole2.h>

#include <cstring>

#include "base/com_pointers.h"
#include "files/compound_directory.h"
#include "other_programs_fixture.h"

namespace {

using namespace cad_host;

class CompoundFileTest : public OtherProgramsTest {
 protected:
  /// Adds a property, changes it and adds another one, each with a save, and checks that nothing else
  /// changes.
  void ExpectToKeepTheRest(const std::wstring& path) {
    const auto before = ContentBesideProperties(path);
    const auto document = Host().Open(path);
    for (const wchar_t* const text : {L"钢", L"铝"}) {
      std::erase_if(document->model.properties, [](const auto& property) { return property.name == L"A"; });
      document->model.properties.push_back({.name = L"A", .text = text});
      Host().Save(*document);
      EXPECT_EQ(Differences(before, ContentBesideProperties(path)), Strings())
          << testing::PrintToString(text);
      EXPECT_EQ(TextsOf(cad_host::ReadModelFile(path).properties).at(L"A"), text);
    }
  }
};

TEST_F(CompoundFileTest, KeepsMoreSectorsThanTheHeaderHasPlacesFor) {
  std::string large(16 * 1024 * 1024, '\0');
  for (std::size_t place = 0; place < large.size(); ++place) {
    large[place] = static_cast<char>(place / 512 + place);  // other bytes in each sector
  }
  const std::wstring path = MakeCompound({{L"Large", large}, {L"Small", "small"}});
  const std::string before = ReadFileBytes(path);
  ASSERT_EQ(SectorSize(before), 512u);
  ASSERT_GE(ExtraTableSectors(before), 2u);

  ExpectToKeepTheRest(path);

  EXPECT_TRUE(CompoundContent(path)[L"Large"].bytes == large);
  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "A"), "\t= \"\\351\\223\\235\"\n");
}

TEST_F(CompoundFileTest, KeepsSectorsOf4096Bytes) {
  const std::wstring path = m_folder.Path(kPartText);
  constexpr std::size_t kSector = 4096;
  constexpr std::size_t kVersion = 26;  // in the header
  {
    STGOPTIONS options{};
    options.usVersion = 1;
    options.ulSectorSize = kSector;
    IStoragePtr storage;
    ASSERT_EQ(StgCreateStorageEx(path.c_str(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE,
                                 STGFMT_DOCFILE, 0, &options, nullptr, IID_PPV_ARGS(&storage)),
              S_OK);
    for (const auto& [name, size] : {std::pair{L"Small", 100}, {L"Large", 50'000}}) {
      IStreamPtr stream;
      ASSERT_EQ(
          storage->CreateStream(name, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream),
          S_OK);
      const std::string bytes(static_cast<std::size_t>(size), 'b');
      ASSERT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), S_OK);
    }
  }
  const std::string before = ReadFileBytes(path);
  ASSERT_EQ(SectorSize(before), kSector);
  ASSERT_EQ(before[kVersion], 4);

  ExpectToKeepTheRest(path);

  EXPECT_EQ(SectorSize(ReadFileBytes(path)), kSector);
  EXPECT_EQ(ReadFileBytes(path)[kVersion], 4);
  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "A"), "\t= \"\\351\\223\\235\"\n");
}

/// Gives the root and all storages a class, state bits and times of their own. @return how many these are.
int SetClassesStateBitsAndTimes(const std::wstring& path) {
  std::string file = ReadFileBytes(path);
  const auto set = [&](std::size_t place, const auto& value) {
    std::memcpy(&file[place], &value, sizeof value);
  };
  int storages = 0;
  for (const DirectoryEntry& entry : DirectoryOf(file)) {
    if (!entry.path.empty() && entry.path.back() != L'\\') continue;  // streams have none
    ++storages;
    file.replace(entry.offset + kEntryClassId, entry.class_id.size(), entry.class_id.size(),
                 static_cast<char>(storages));
    set(entry.offset + kEntryStateBits, std::uint32_t{0x80000000} + static_cast<std::uint32_t>(storages));
    // The root has no time of its creation.
    if (!entry.path.empty()) set(entry.offset + kEntryCreated, 133'615'872'000'000'000 + storages);
    set(entry.offset + kEntryModified, 133'615'872'100'000'000 + storages);
  }
  WriteFileBytes(path, file);
  return storages;
}

TEST_F(CompoundFileTest, KeepsClassesStateBitsAndTimes) {
  const std::wstring path = ChinesePart();
  ASSERT_EQ(SetClassesStateBitsAndTimes(path), 3);
  const CompoundElement cache = CompoundContent(path).at(L"Geometry\\Cache\\");
  ASSERT_EQ(cache.class_id, std::string(16, '\3'));
  ASSERT_EQ(cache.state_bits, 0x80000003);

  ExpectToKeepTheRest(path);
}

TEST_F(CompoundFileTest, KeepsClassesStateBitsAndTimesOfTheNeighboursOfANewPropertySet) {
  const std::wstring path =
      MakeCompound({{L"A\\B\\Stream", "b"}, {L"C\\Stream", "c"}, {L"Longer\\Stream", "longer"}});
  ASSERT_EQ(SetClassesStateBitsAndTimes(path), 5);

  ExpectToKeepTheRest(path);
}

}  // namespace
