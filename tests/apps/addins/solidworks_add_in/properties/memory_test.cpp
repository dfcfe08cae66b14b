// Reading and writing properties if memory runs out, and what they free.
#include <gtest/gtest.h>

#include <functional>
#include <string_view>
#include <utility>

#include "heap_blocks.h"
#include "import_patch.h"
#include "log_line.h"
#include "property_access_fixture.h"
#include "raised_by.h"

namespace {

/// While it lives, this program, into which the class is linked, has no memory for a BSTR of one text.
class NoMemoryForText {
 public:
  explicit NoMemoryForText(std::wstring_view text) { s_text = text; }

 private:
  static BSTR WINAPI Allocate(const OLECHAR* text, UINT length) {
    if (text && std::wstring_view(text, length) == s_text) return nullptr;
    // The import itself leads here.
    FARPROC function = GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SysAllocStringLen");
    return reinterpret_cast<decltype(&Allocate)>(reinterpret_cast<void*>(function))(text, length);
  }

  static inline std::wstring_view s_text;
  ImportPatch m_patch{GetModuleHandleW(nullptr), "SysAllocStringLen", Allocate};
};

HRESULT WINAPI NoMemoryForNames(SAFEARRAY*, void**) { return E_OUTOFMEMORY; }

class PropertyMemory : public PropertyAccessFixture {
 protected:
  /// Nothing was logged, shown or written.
  void ExpectNoEffect(const cad_host::Document& document) const {
    EXPECT_EQ(PropertiesOf(document), (Texts{L"A=1", L"B=2", L"C=3"}));
    EXPECT_EQ(Boxes(), Texts{});
    EXPECT_EQ(m_home.LogLines(), Texts{});
  }
};

TEST_F(PropertyMemory, ForTheConfigurationNameRunsOut) {
  const auto document = OpenPartWithThree();
  const IModelDoc2Ptr given = ActiveModel();
  const auto read = Json();
  const auto values = Json(LR"({"A":"x"})");
  const NoMemoryForText fault(L"");
  EXPECT_EQ(RaisedBy([&] { m_class->GetAttributes(read); }), E_OUTOFMEMORY);
  EXPECT_EQ(RaisedBy([&] { m_class->GetCustomProperty(given, read); }), E_OUTOFMEMORY);
  EXPECT_EQ(RaisedBy([&] { m_class->PutAttributes(values); }), E_OUTOFMEMORY);
  EXPECT_EQ(read->ToJson(), L"{}");
  ExpectNoEffect(*document);
}

TEST_F(PropertyMemory, ForAValueRunsOutAfterTheValuesBeforeItWereWritten) {
  const auto document = OpenPartWithThree();
  const auto values = Json(LR"({"A":"x","B":"y","C":"z"})");
  const NoMemoryForText fault(L"y");
  EXPECT_EQ(RaisedBy([&] { m_class->PutAttributes(values); }), E_OUTOFMEMORY);
  EXPECT_EQ(PropertiesOf(*document), (Texts{L"A=x", L"B=2", L"C=3"}));
  EXPECT_EQ(Boxes(), Texts{});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyMemory, ForTheNamesRunsOut) {
  const auto document = OpenPartWithThree();
  const IModelDoc2Ptr given = ActiveModel();
  const auto read = Json();
  const auto values = Json(LR"({"A":"x"})");
  const ImportPatch fault(GetModuleHandleW(nullptr), "SafeArrayAccessData", NoMemoryForNames);
  EXPECT_EQ(RaisedBy([&] { m_class->GetAttributes(read); }), E_OUTOFMEMORY);
  EXPECT_EQ(RaisedBy([&] { m_class->PutAttributes(values); }), E_OUTOFMEMORY);
  ExpectNoEffect(*document);
  EXPECT_EQ(m_class->GetCustomProperty(given, read), E_OUTOFMEMORY);
  EXPECT_EQ(read->ToJson(), L"{}");
  EXPECT_EQ(AddInLog(), Texts{ErrorLine(1479, L"GetCustomProperty",
                                        L"CSolidWorksFileAnalyser::Var2StringList", E_OUTOFMEMORY)});
}

TEST_F(PropertyMemory, IsFreedByEachOperation) {
  constexpr int kRounds = 60;
  OpenPartWithThree();
  const IModelDoc2Ptr given = ActiveModel();
  const auto written = Json(LR"({"A":"x","B":"y","C":"z"})");
  const std::pair<const char*, std::function<HRESULT()>> operations[] = {
      {"GetAttributes", [&] { return m_class->GetAttributes(Json()); }},
      {"GetCustomProperty", [&] { return m_class->GetCustomProperty(given, Json()); }},
      {"PutAttributes", [&] {
         ExpectBoxes(1);
         return m_class->PutAttributes(written);
       }}};
  for (const auto& [name, operation] : operations) {
    const auto blocks_after_rounds = [&] {
      for (int round = 0; round < kRounds; ++round) EXPECT_EQ(operation(), S_OK);
      m_host->GetJournal().Clear();
      m_boxes.emplace();  // forgets the boxes
      return HeapBlockCount();
    };
    const std::size_t before = blocks_after_rounds();
    EXPECT_LT(blocks_after_rounds(), before + kRounds / 2) << name;
  }
}

}  // namespace
