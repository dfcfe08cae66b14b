// All programs and DLLs of the build: the same bytes wherever and whenever they are built.
#include <gtest/gtest.h>

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "CStringHelper.h"
#include "base/com_pointers.h"
#include "image.h"
#include "program_folder.h"
#include "temp_folder.h"

namespace {

// What widl writes into a type library: its name and the time.
constexpr std::string_view kWritten = "Created by WIDL version ";
constexpr std::string_view kFirstSecond = "at Thu Jan  1 00:00:00 1970";
constexpr GUID kTimeOfTypeLibrary{
    0xde77ba63, 0x517c, 0x11d1, {0xa2, 0xda, 0x00, 0x00, 0xf8, 0x77, 0x3c, 0xe9}};

struct Binary {
  std::string name;  // below the build folder
  std::string bytes;
};

class Binaries : public testing::Test {
 protected:
  /// Calls `look` with each program and DLL.
  template <typename Look>
  void ForEach(const Look& look) {
    std::istringstream names(ReadFileBytes(BesideTests(L"programs.txt")));
    for (Binary binary; std::getline(names, binary.name);) {
      binary.bytes = ReadFileBytes(BesideTests(L"..\\" + CStringHelper::UTF8ToUnicode(binary.name)));
      look(binary);
      ++m_count;
    }
    EXPECT_GT(m_count, 40) << "programs.txt";
  }

  int m_count = 0;
};

std::string Utf16(std::string_view text) {
  const std::wstring wide = CStringHelper::UTF8ToUnicode(text);
  return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t)};
}

/// The folder of the sources, as the system's programs name it.
std::string SourceFolder() {
  std::string folder = CStringHelper::UnicodeToUTF8(SourceFile(L""));
  folder.erase(0, folder.find(':') + 1);
  folder.pop_back();
  std::ranges::replace(folder, '\\', '/');
  return folder;
}

/// How the folder of the sources can stand in a program: with either separator, in either encoding.
std::vector<std::string> Spellings(std::string folder) {
  std::vector<std::string> spellings{folder + '/', Utf16(folder + '/')};
  std::ranges::replace(folder, '/', '\\');
  spellings.push_back(folder + '\\');
  spellings.push_back(Utf16(folder + '\\'));
  return spellings;
}

/// Whether `rest` begins with a folder of the sources, or with that of the build. Another program's path may
/// contain a short path of the sources by chance.
bool NamesFolderOfSources(std::string_view rest) {
  return std::ranges::any_of(
      std::initializer_list<std::string>{"apps", "build", "host", "platform", "sim", "tests"},
      [rest](const std::string& name) { return rest.starts_with(name) || rest.starts_with(Utf16(name)); });
}

}  // namespace

TEST_F(Binaries, DoNotNameTheFolderInWhichTheyWereBuilt) {
  const std::vector<std::string> spellings = Spellings(SourceFolder());
  ForEach([&](const Binary& binary) {
    for (const std::string& folder : spellings) {
      for (std::size_t place = binary.bytes.find(folder); place != std::string::npos;
           place = binary.bytes.find(folder, place + 1)) {
        const std::string_view rest = std::string_view(binary.bytes).substr(place + folder.size(), 100);
        ASSERT_FALSE(NamesFolderOfSources(rest)) << binary.name << ": " << folder << rest;
      }
    }
  });
}

TEST_F(Binaries, HaveNoTimeInTheirTables) {
  ForEach([](const Binary& binary) {
    for (const Stamp& stamp : Stamps(binary.bytes)) {
      EXPECT_EQ(stamp.seconds, 0u) << binary.name << ", " << stamp.where;
    }
  });
}

TEST_F(Binaries, HaveTypeLibrariesWithAFixedTime) {
  std::vector<std::string> with_type_library;
  ForEach([&](const Binary& binary) {
    const std::size_t place = binary.bytes.find(kWritten);
    if (place == std::string::npos || binary.name == "tests/binaries_test.exe") return;
    const std::string_view rest = std::string_view(binary.bytes).substr(place, 100);
    EXPECT_NE(rest.find(kFirstSecond), std::string::npos) << binary.name << ": " << rest.substr(0, 60);
    with_type_library.push_back(binary.name);
  });
  EXPECT_TRUE(std::ranges::count(with_type_library, "bin/solidworks_add_in.dll"));
  EXPECT_TRUE(std::ranges::count(with_type_library, "bin/cad_host.exe"));
}

TEST_F(Binaries, TellNoTimeInTheTypeLibraryOfTheAddIn) {
  _com_ptr_t<_com_IIID<ITypeLib, &IID_ITypeLib>> library;
  ASSERT_EQ(LoadTypeLibEx(InBin(L"solidworks_add_in.dll").c_str(), REGKIND_NONE, &library), S_OK);
  _com_ptr_t<_com_IIID<ITypeLib2, &IID_ITypeLib2>> with_data = library;
  _variant_t time;
  ASSERT_EQ(with_data->GetCustData(kTimeOfTypeLibrary, &time), S_OK);
  ASSERT_EQ(time.vt, VT_UI4);
  EXPECT_EQ(time.ulVal, 0u);
}
