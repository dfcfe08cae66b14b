// BSTRs and wide strings.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "CCADStringHelper.h"
#include "CStringHelper.h"

using namespace std::string_literals;

namespace {

TEST(Bstr, KeepsEveryCharacterBothWays) {
  for (const std::wstring& text : {L""s, L"C:\\x\\A.sldprt"s, L"\u96f6\u4ef6 \U0001F600"s, L"\xD800 alone"s,
                                   L"a\0b\0"s, std::wstring(100'000, L'x')}) {
    const CComBSTR string = CStringHelper::String2CComBSTR(text);
    EXPECT_EQ(SysStringLen(string), text.size());
    EXPECT_EQ(CStringHelper::CComBSTR2WString(string), text);
    EXPECT_EQ(CCADStringHelper::CComBSTR2WString(string), text);
    EXPECT_EQ(string.View(), text);
  }
}

TEST(Bstr, OfAnEmptyStringIsNotNull) {
  EXPECT_NE(static_cast<BSTR>(CStringHelper::String2CComBSTR(L"")), nullptr);
}

TEST(Bstr, NullIsTheEmptyString) {
  EXPECT_EQ(CStringHelper::CComBSTR2WString(nullptr), L"");
  EXPECT_EQ(CCADStringHelper::CComBSTR2WString(nullptr), L"");
  EXPECT_EQ(CComBSTR().View(), L"");
}

TEST(Bstr, CopiesAreDeepAndMovesTakeOver) {
  CComBSTR first(L"first");
  wchar_t* const held = first;
  const CComBSTR copy = first;
  EXPECT_NE(static_cast<BSTR>(copy), held);
  EXPECT_EQ(copy.View(), L"first");
  const CComBSTR moved = std::move(first);
  EXPECT_EQ(static_cast<BSTR>(moved), held);
  CComBSTR second(L"second");
  second = copy;
  EXPECT_EQ(second.View(), L"first");
  EXPECT_EQ(static_cast<BSTR>(CComBSTR(CComBSTR())), nullptr);
}

TEST(Bstr, CanBeAttachedAndDetached) {
  CComBSTR string(L"old");
  *&string = SysAllocString(L"out argument");
  EXPECT_EQ(string.View(), L"out argument");
  string.Attach(SysAllocString(L"attached"));
  EXPECT_EQ(string.View(), L"attached");
  CComBSTR other;
  other.Attach(string.Detach());
  EXPECT_EQ(static_cast<BSTR>(string), nullptr);
  EXPECT_EQ(other.View(), L"attached");
}

}  // namespace
