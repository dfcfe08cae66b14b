// The add-in if the default configuration beside the DLL is missing.
#include "CStringHelper.h"
#include "fresh_dll_fixture.h"
#include "log_line.h"
#include "result_codes.h"

namespace {

class NoDefaultConfiguration : public FreshDllFixture {};

TEST_F(NoDefaultConfiguration, MakesConnectingFailAndNamesTheMissingFile) {
  LoadCopy();
  const std::wstring view = ConfigurationPath(L"View.json");
  try {
    Connect();
    ADD_FAILURE() << "no exception";
  } catch (const cad_host::HostError& error) {
    EXPECT_EQ(error.Result(), hr::kJsonWrongType);
  }
  const auto connects = m_host->GetJournal().Of(L"ISwAddin::ConnectToSW");
  ASSERT_EQ(connects.size(), 1u);
  EXPECT_EQ(connects[0].result, hr::kJsonWrongType);
  EXPECT_EQ(connects[0].results, L"false");
  EXPECT_EQ(m_host->Groups().size(), 0u);
  const auto log = LogFileLines();
  ASSERT_EQ(log.size(), 2u);
  EXPECT_NE(log[0].find(L" INFO  platform "), std::wstring::npos) << CStringHelper::UnicodeToUTF8(log[0]);
  EXPECT_NE(log[1].find(L" ERROR platform "), std::wstring::npos) << CStringHelper::UnicodeToUTF8(log[1]);
  // The text of the failure names the file; the line does not name it once more.
  const std::size_t first = log[1].find(view);
  ASSERT_NE(first, std::wstring::npos) << CStringHelper::UnicodeToUTF8(log[1]);
  EXPECT_EQ(log[1].find(view, first + 1), std::wstring::npos) << CStringHelper::UnicodeToUTF8(log[1]);
  EXPECT_TRUE(log[1].ends_with(CodeText(hr::kJsonWrongType))) << CStringHelper::UnicodeToUTF8(log[1]);
}

}  // namespace
