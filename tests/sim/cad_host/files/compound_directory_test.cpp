// The directory of compound files, read from their bytes: whole ones and damaged ones.
#include "files/compound_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace cad_host;

constexpr std::size_t kSector = 512;
constexpr std::size_t kNumberSize = 4;

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(file), {});
  if (!file || bytes.empty()) throw std::runtime_error("cannot read " + path.string());
  return bytes;
}

/// A file of about 17 KB; fixtures/other_programs.c says what is in it.
std::string Part() { return ReadFile(std::filesystem::path(FIXTURES_FOLDER) / "page936.sldprt"); }

bool IsRefused(const std::string& file) {
  try {
    DirectoryOf(file);
    return false;
  } catch (const std::out_of_range&) {
    return true;
  }
}

TEST(CompoundDirectory, HasEachStorageBeforeWhatIsInIt) {
  std::vector<std::wstring> paths;
  for (const DirectoryEntry& entry : DirectoryOf(Part())) paths.push_back(entry.path);

  EXPECT_EQ(paths.size(), 10u);
  EXPECT_EQ(paths.at(0), L"");
  const auto place = [&](const wchar_t* path) {
    const auto found = std::find(paths.begin(), paths.end(), path);
    EXPECT_NE(found, paths.end());
    return found - paths.begin();
  };
  EXPECT_LT(place(L"Geometry\\"), place(L"Geometry\\Cache\\"));
  EXPECT_LT(place(L"Geometry\\Cache\\"), place(L"Geometry\\Cache\\Triangles"));
}

TEST(CompoundDirectory, IsRefusedIfTheFileIsCutOffInIt) {
  const std::string file = Part();
  std::size_t end = 0;
  for (const DirectoryEntry& entry : DirectoryOf(file)) end = std::max(end, entry.offset + kEntryFirstSector);

  for (std::size_t size = 0; size < end; size += kNumberSize)
    EXPECT_TRUE(IsRefused(file.substr(0, size))) << size;
}

// The sanitizers see what is read beyond the end, and a chain or a tree that is a circle must not hang.
TEST(CompoundDirectory, IsReadOrRefusedWhereverANumberIsWrong) {
  const std::string file = Part();
  int refused = 0;
  for (std::size_t place = 0; place + kNumberSize <= file.size(); place += kNumberSize) {
    for (const char wrong : {'\0', '\1', '\x7F'}) {
      std::string damaged = file;
      damaged.replace(place, kNumberSize, std::string{wrong, 0, 0, 0});
      refused += IsRefused(damaged) ? 1 : 0;
    }
  }

  EXPECT_GT(refused, 0);
}

TEST(CompoundDirectory, IsRefusedIfTheChainOfItsSectorsIsACircle) {
  std::string file = Part();
  const std::size_t first_directory_sector = DirectoryOf(file).at(0).offset / kSector - 1;
  const std::size_t table = 76;  // the place of the first sector of the allocation table
  const std::size_t table_sector = static_cast<unsigned char>(file.at(table)) +
                                   std::size_t{static_cast<unsigned char>(file.at(table + 1))} * 256;
  const std::size_t next = (table_sector + 1) * kSector + first_directory_sector * kNumberSize;
  file.replace(next, kNumberSize, std::string{static_cast<char>(first_directory_sector), 0, 0, 0});

  EXPECT_TRUE(IsRefused(file));
}

// The fixtures are those that their program writes.
TEST(FixturesOfOtherPrograms, AreWhatTheirProgramWrites) {
  const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "other_programs_fixtures";
  std::filesystem::create_directories(folder);
  const std::string command = "cd '" + folder.string() + "' && LC_ALL=C.UTF-8 '" OTHER_PROGRAMS "'";
  ASSERT_EQ(std::system(command.c_str()), 0);

  for (const char* const name : {"page936.sldprt", "page1252.sldasm"}) {
    EXPECT_TRUE(ReadFile(folder / name) == ReadFile(std::filesystem::path(FIXTURES_FOLDER) / name)) << name;
  }
  std::filesystem::remove_all(folder);
}

}  // namespace
