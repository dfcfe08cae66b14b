// VARIANTs that hold lists of strings.
#include <gtest/gtest.h>
#include <windows.h>

#include <comdef.h>

#include <climits>
#include <string>
#include <string_view>
#include <vector>

#include "CStringHelper.h"
#include "CVariantHelper.h"
#include "import_patch.h"

using namespace std::string_literals;

namespace {

using Texts = std::vector<std::wstring>;

/// A VARIANT that owns an array of BSTR, with the first index `lower_bound`.
_variant_t StringArray(const Texts& texts, LONG lower_bound = 0) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, lower_bound, static_cast<ULONG>(texts.size()));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    LONG index = lower_bound + static_cast<LONG>(i);
    EXPECT_EQ(SafeArrayPutElement(array, &index, CComBSTR(texts[i])), S_OK);
  }
  _variant_t variant;
  V_VT(&variant) = VT_ARRAY | VT_BSTR;
  V_ARRAY(&variant) = array;
  return variant;
}

/// A VARIANT that owns an array of `type` with the given bounds.
_variant_t OtherArray(VARTYPE type, std::vector<SAFEARRAYBOUND> bounds) {
  _variant_t variant;
  V_ARRAY(&variant) = SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data());
  V_VT(&variant) = VT_ARRAY | type;
  return variant;
}

Texts ToTexts(const std::vector<CComBSTR>& list) {
  Texts texts;
  for (const CComBSTR& string : list) texts.push_back(CStringHelper::CComBSTR2WString(string));
  return texts;
}

/// Calls Var2StringList with a list that is not empty.
std::pair<HRESULT, Texts> Convert(const VARIANT& variant) {
  std::vector<CComBSTR> list{CComBSTR(L"from before")};
  const HRESULT result = CVariantHelper::Var2StringList(variant, list);
  return {result, ToTexts(list)};
}

TEST(Var2StringList, ReturnsTheStringsInArrayOrder) {
  const Texts texts{L"Material", L"", L"\u96f6\u4ef6", L"a\0b"s, L"Material"};
  for (const LONG lower_bound : {0L, 1L, -3L, LONG_MIN, LONG_MAX - 5}) {
    const _variant_t variant = StringArray(texts, lower_bound);
    EXPECT_EQ(Convert(variant), std::pair(S_OK, texts)) << "from " << lower_bound;
    EXPECT_EQ(SafeArrayGetDim(V_ARRAY(&variant)), 1u) << "the variant still owns the array";
  }
}

TEST(Var2StringList, ReturnsANullElementAsTheEmptyString) {
  const _variant_t variant = OtherArray(VT_BSTR, {{.cElements = 2, .lLbound = 0}});
  EXPECT_EQ(Convert(variant), std::pair(S_OK, Texts(2)));
}

TEST(Var2StringList, ReturnsNothingForAnEmptyArray) {
  EXPECT_EQ(Convert(StringArray({})), std::pair(S_OK, Texts()));
}

TEST(Var2StringList, ReturnsNothingIfThereIsNoArray) {
  EXPECT_EQ(Convert(_variant_t()), std::pair(S_OK, Texts()));
  _variant_t null;
  V_VT(&null) = VT_NULL;
  EXPECT_EQ(Convert(null), std::pair(S_OK, Texts()));
  _variant_t no_array;
  V_VT(&no_array) = VT_ARRAY | VT_BSTR;
  V_ARRAY(&no_array) = nullptr;
  EXPECT_EQ(Convert(no_array), std::pair(S_OK, Texts()));
}

TEST(Var2StringList, FollowsReferences) {
  _variant_t owner = StringArray({L"a", L"b"});
  VARIANT reference_to_array;
  V_VT(&reference_to_array) = VT_BYREF | VT_ARRAY | VT_BSTR;
  V_ARRAYREF(&reference_to_array) = &V_ARRAY(&owner);
  EXPECT_EQ(Convert(reference_to_array), std::pair(S_OK, Texts{L"a", L"b"}));
  VARIANT reference_to_variant;
  V_VT(&reference_to_variant) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&reference_to_variant) = &owner;
  EXPECT_EQ(Convert(reference_to_variant), std::pair(S_OK, Texts{L"a", L"b"}));
}

TEST(Var2StringList, RefusesOtherTypes) {
  const SAFEARRAYBOUND two{.cElements = 2, .lLbound = 0};
  const _variant_t others[] = {
      _variant_t(L"Material"),
      _variant_t(1L),
      _variant_t(true),
      _variant_t(static_cast<IDispatch*>(nullptr)),
      OtherArray(VT_VARIANT, {two}),
      OtherArray(VT_I4, {two}),
      OtherArray(VT_BSTR, {two, two}),
  };
  for (const _variant_t& other : others) {
    EXPECT_EQ(Convert(other), std::pair(DISP_E_TYPEMISMATCH, Texts())) << "VARTYPE " << V_VT(&other);
  }
}

BSTR WINAPI NoMemoryAfterTheFirst(const OLECHAR* text, UINT length) {
  const std::wstring_view wanted(text, length);
  return wanted == L"a" ? SysAllocString(L"a") : nullptr;
}

TEST(Var2StringList, RunsOutOfMemoryWithoutAList) {
  const _variant_t names = StringArray({L"a", L"b"});
  std::vector<CComBSTR> list{CComBSTR(L"from before")};
  const ImportPatch fault(GetModuleHandleW(nullptr), "SysAllocStringLen", &NoMemoryAfterTheFirst);
  EXPECT_EQ(CVariantHelper::Var2StringList(names, list), E_OUTOFMEMORY);
  EXPECT_TRUE(list.empty());
}

}  // namespace
