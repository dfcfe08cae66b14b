// What covering a file may cost: one copy by the system, and a few other calls, however large the file is.
#include <gtest/gtest.h>

#include "covering_fixture.h"
#include "file_calls.h"

namespace {

class CoveringBudget : public CoveringFixture {};

TEST_F(CoveringBudget, IsOneCopyAndAFewOtherCallsOnFiles) {
  Put(L"prj\\A.sldprt", L"old");
  const std::wstring download = Put(L"dl\\A.sldprt", L"new");
  Assemble(L"prj\\A.sldprt");
  const FileCalls calls;

  EXPECT_EQ(Cover({download}).result, S_OK);

  EXPECT_EQ(calls.Copies(), 1);
  EXPECT_EQ(calls.Moves(), 1);
  RecordProperty("other file calls", calls.Others());
  EXPECT_LE(calls.Others(), 12);
}

}  // namespace
