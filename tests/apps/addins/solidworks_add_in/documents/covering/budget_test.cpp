// What covering a file may cost: one copy by the system, and a few other calls, however large the file is.
#include <gtest/gtest.h>

#include <shlwapi.h>

#include "call_count.h"
#include "covering_fixture.h"

namespace {

class CoveringBudget : public CoveringFixture {};

TEST_F(CoveringBudget, IsOneCopyAndAFewOtherCallsOnFiles) {
  Put(L"prj\\A.sldprt", L"old");
  const std::wstring download = Put(L"dl\\A.sldprt", L"new");
  Assemble(L"prj\\A.sldprt");
  const HMODULE dll = GetModuleHandleW(L"solidworks_add_in.dll");
  ASSERT_TRUE(dll);
  const CallCount<0, decltype(CopyFileW)> copies("CopyFileW", dll);
  const CallCount<0, decltype(CreateDirectoryW)> folders("CreateDirectoryW", dll);
  const CallCount<0, decltype(CreateFileW)> opened("CreateFileW", dll);
  const CallCount<0, decltype(DeleteFileW)> deleted("DeleteFileW", dll);
  const CallCount<0, decltype(GetFileAttributesExW)> attributes_ex("GetFileAttributesExW", dll);
  const CallCount<0, decltype(GetFileAttributesW)> attributes("GetFileAttributesW", dll);
  const CallCount<0, decltype(MoveFileExW)> moves("MoveFileExW", dll);
  const CallCount<0, decltype(PathFileExistsW)> exists("PathFileExistsW", dll);
  const CallCount<0, decltype(PathIsDirectoryW)> is_folder("PathIsDirectoryW", dll);

  EXPECT_EQ(Cover({download}).result, S_OK);

  EXPECT_EQ(copies.Count(), 1);
  EXPECT_EQ(moves.Count(), 1);
  const int others = folders.Count() + opened.Count() + deleted.Count() + attributes_ex.Count() +
                     attributes.Count() + moves.Count() + exists.Count() + is_folder.Count();
  RecordProperty("other file calls", others);
  EXPECT_LE(others, 12);
}

}  // namespace
