// The add-in if the default configuration beside the DLL is missing.
#include <algorithm>

#include "CStringHelper.h"
#include "CZALException.h"
#include "fresh_dll_fixture.h"
#include "result_codes.h"

namespace {

class NoDefaultConfiguration : public FreshDllFixture {
 protected:
  void SetUp() override {
    const std::wstring copy = m_folder.MakeFolder(L"add-in") + L"\\solidworks_add_in.dll";
    ASSERT_TRUE(CopyFileW(AddInDll::BuiltPath().c_str(), copy.c_str(), TRUE));
    Load(copy);
  }

  void TearDown() override {
    EXPECT_EQ(m_dll->UnregisterServer(), S_OK);
    FreshDllFixture::TearDown();
  }
};

TEST_F(NoDefaultConfiguration, MakesConnectingFailAndNamesTheMissingFile) {
  const std::wstring view = ConfigurationPath(L"View.json");
  try {
    Connect();
    ADD_FAILURE() << "no exception";
  } catch (const CZALException& exception) {
    EXPECT_EQ(exception.GetErrorCode(), hr::kJsonWrongType);
    EXPECT_NE(exception.GetErrorMessage().find(view), std::wstring::npos);
  }
  EXPECT_EQ(m_host->Groups().size(), 0u);
  const std::wstring log = m_folder.ReadText(L"log\\SolidWorks.log");
  EXPECT_EQ(std::count(log.begin(), log.end(), L'\n'), 1);
  EXPECT_NE(log.find(view), std::wstring::npos) << CStringHelper::UnicodeToUTF8(log);
}

}  // namespace
