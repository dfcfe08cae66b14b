#include <gtest/gtest.h>

#include <windows.h>

#include "CFileHelper.h"
#include "CFilePathHelper.h"
#include "temp_folder.h"

namespace {
TEST(CreateFolder, MakesAFolderAndItsParents) {
  const TempFolder temp;
  for (const wchar_t* name : {L"one", L"a\\b\\c\\d", L"x/y\\z", L"with end\\", L"图纸\\螺栓"}) {
    EXPECT_TRUE(CFileHelper::CreateFolder(temp.Path(name), true))
        << testing::PrintToString(std::wstring(name));
    EXPECT_TRUE(temp.Exists(name));
  }
}

TEST(CreateFolder, FailsForAnExistingFolderOnlyIfAskedTo) {
  const TempFolder temp;
  temp.MakeFolder(L"there");
  EXPECT_TRUE(CFileHelper::CreateFolder(temp.Path(L"there"), false));
  EXPECT_FALSE(CFileHelper::CreateFolder(temp.Path(L"there"), true));
  EXPECT_TRUE(temp.Exists(L"there"));
}

TEST(CreateFolder, FailsIfAFileIsInTheWay) {
  const TempFolder temp;
  temp.Write(L"file", "content");
  EXPECT_FALSE(CFileHelper::CreateFolder(temp.Path(L"file"), false));
  EXPECT_FALSE(CFileHelper::CreateFolder(temp.Path(L"file\\below\\it"), false));
  EXPECT_EQ(temp.Read(L"file"), "content");
}

TEST(CreateFolder, FailsForAnInvalidPath) {
  for (const wchar_t* path : {L"", L"Q:\\no\\such\\drive", L"C:\\bad|name\\x", L"C:\\bad?\\x"}) {
    EXPECT_FALSE(CFileHelper::CreateFolder(path, false)) << testing::PrintToString(std::wstring(path));
  }
}

TEST(CreateFolder, MakesFoldersBeyondTwoHundredAndSixtyCharacters) {
  const TempFolder temp;
  std::wstring name;
  for (int level = 0; level < 40; ++level) name += L"a long folder name " + std::to_wstring(level) + L"\\";
  name += L"end";
  ASSERT_GT(temp.Path(name).size(), 900u);

  EXPECT_TRUE(CFileHelper::CreateFolder(temp.Path(name), true));
  EXPECT_TRUE(temp.Exists(name));
  EXPECT_FALSE(CFileHelper::CreateFolder(temp.Path(name), true));
}

TEST(CreateFolder, MakesOneLevelAtTheEdgeOfTheLimit) {
  const TempFolder temp;
  for (std::size_t size = 245; size < 265; ++size) {
    const std::wstring name(size - temp.Path().size() - 1, L'x');
    EXPECT_TRUE(CFileHelper::CreateFolder(temp.Path(name), true)) << size;
    EXPECT_TRUE(temp.Exists(name)) << size;
  }
}

TEST(TempFolder, LeavesNothingBehind) {
  std::wstring path;
  {
    const TempFolder temp;
    path = temp.Path();
    temp.Write(L"a\\b\\file", "content");
    temp.Write(std::wstring(120, L'd') + L"\\" + std::wstring(120, L'e') + L"\\file", "content");
    SetFileAttributesW(temp.Write(L"read only", "content").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(temp.List().size(), 3u);
  }
  EXPECT_EQ(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
}
}  // namespace
