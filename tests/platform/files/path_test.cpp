#include <gtest/gtest.h>

#include "CCADFileHelper.h"
#include "CFilePathHelper.h"

namespace {
struct Split {
  const wchar_t* path;
  const wchar_t* folder;
  const wchar_t* name;
};

TEST(SplitFilePath, SplitsAtTheLastSeparatorOfEitherKind) {
  const Split splits[] = {
      {L"C:\\models\\bolt.sldprt", L"C:\\models", L"bolt.sldprt"},
      {L"C:/models/bolt.sldprt", L"C:/models", L"bolt.sldprt"},
      {L"C:\\models/bolt.sldprt", L"C:\\models", L"bolt.sldprt"},
      {L"C:/models\\bolt.sldprt", L"C:/models", L"bolt.sldprt"},
      {L"\\\\server\\share\\bolt.sldprt", L"\\\\server\\share", L"bolt.sldprt"},
      {L"C:\\bolt.sldprt", L"C:", L"bolt.sldprt"},
      {L"\\bolt.sldprt", L"", L"bolt.sldprt"},
      {L"C:\\models\\", L"C:\\models", L""},
      {L"bolt.sldprt", L"", L"bolt.sldprt"},
      {L"C:bolt.sldprt", L"", L"C:bolt.sldprt"},
      {L"", L"", L""},
      {L"C:\\图纸\\螺栓\U0001F529.sldprt", L"C:\\图纸", L"螺栓\U0001F529.sldprt"},
  };
  for (const Split& split : splits) {
    SCOPED_TRACE(testing::PrintToString(std::wstring(split.path)));
    std::wstring folder = L"left over", name = L"left over";
    CFilePathHelper::SplitFilePath(split.path, folder, name);
    EXPECT_EQ(folder, split.folder);
    EXPECT_EQ(name, split.name);
  }
}

TEST(SplitFilePath, AcceptsItsOwnResultAsThePath) {
  std::wstring path = L"C:\\models\\bolt.sldprt", other;
  CFilePathHelper::SplitFilePath(path, path, other);
  EXPECT_EQ(path, L"C:\\models");
  EXPECT_EQ(other, L"bolt.sldprt");

  path = L"C:\\models\\bolt.sldprt";
  CFilePathHelper::SplitFilePath(path, other, path);
  EXPECT_EQ(other, L"C:\\models");
  EXPECT_EQ(path, L"bolt.sldprt");
}

TEST(IsProeFile, FindsTheVersionAfterTheExtension) {
  const Split files[] = {
      {L"bolt.prt.12", L"12", L"bolt.prt"},
      {L"C:\\v1.2\\bolt.asm.1", L"1", L"bolt.asm"},
      {L"C:/models/bolt.rev.drw.003", L"003", L"bolt.rev.drw"},
  };
  for (const Split& file : files) {
    std::wstring version, name;
    EXPECT_TRUE(CCADFileHelper::IsProeFile(file.path, version, name)) << testing::PrintToString(file.path);
    EXPECT_EQ(version, file.folder);
    EXPECT_EQ(name, file.name);
  }
}

TEST(IsProeFile, DoesNotChangeItsResultsForOtherFiles) {
  for (const wchar_t* path :
       {L"", L"bolt", L"bolt.sldprt", L"bolt.12", L"bolt.prt.", L"bolt.prt.1a", L"bolt..12", L".prt.12",
        L".12", L"C:\\bolt.prt.12\\plate.sldprt", L"C:\\bolt.prt\\12"}) {
    std::wstring version = L"v", name = L"n";
    EXPECT_FALSE(CCADFileHelper::IsProeFile(path, version, name)) << testing::PrintToString(path);
    EXPECT_EQ(version, L"v");
    EXPECT_EQ(name, L"n");
  }
}
}  // namespace
