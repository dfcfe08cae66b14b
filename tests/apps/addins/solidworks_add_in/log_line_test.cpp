// The lines that other tests compare with the log.
#include "log_line.h"

#include <gtest/gtest.h>

#include "result_codes.h"

namespace {

TEST(LogLine, EndsWithTheCodeInLowerCaseWithoutLeadingZeros) {
  EXPECT_EQ(ErrorLine(368, L"PlmLogin", L"pResult is empty", hr::kNoAnswer),
            L"errormsg|ERROR|368|CSolidWorksAddIn::PlmLogin|pResult is empty<hr=0xa3013005>");
  EXPECT_EQ(CodeText(E_FAIL), L"<hr=0x80004005>");
  EXPECT_EQ(CodeText(S_OK), L"<hr=0x0>");
  EXPECT_EQ(CodeText(S_FALSE), L"<hr=0x1>");
  EXPECT_EQ(CodeText(-1), L"<hr=0xffffffff>");
}

TEST(LogLine, EndsWithTheTextIfThereIsNoCode) {
  EXPECT_EQ(ErrorLine(928, L"ReplaceCurrentFile", L"moduleType != swDocASSEMBLY"),
            L"errormsg|ERROR|928|CSolidWorksAddIn::ReplaceCurrentFile|moduleType != swDocASSEMBLY");
}

TEST(LogLine, MayBelongToAnotherClass) {
  EXPECT_EQ(ErrorLine(112, L"InsertChildFile", L"图纸", E_ABORT, kDrawingHelperClass),
            L"errormsg|ERROR|112|CDrawingHelper::InsertChildFile|图纸<hr=0x80004004>");
  EXPECT_EQ(InfoLine(69, kDrawingHelperClass, L"InsertChildFile", L"text"),
            L"infomsg|INFO|69|CDrawingHelper::InsertChildFile|text");
}

}  // namespace
