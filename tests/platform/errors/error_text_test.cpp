#include <gtest/gtest.h>

#include <windows.h>

#include <set>

#include "CZALCIHandlerContextHelper.h"
#include "base/platform_codes.h"

namespace {
std::wstring TextOf(long code) {
  const ZALErrorMsg message = CZALCIHandlerContextHelper::Instance().GetErrorMsg(code);
  EXPECT_EQ(message.code, code);
  return message.text;
}

TEST(ErrorText, OfAPlatformCodeIsThePlatformsOwn) {
  const std::pair<unsigned, const wchar_t*> texts[] = {
      {0xA3012003, L"The downloaded file was not found."},
      {0xA3012005, L"The file could not be copied."},
      {0xA3012006, L"The file could not be moved to the backup folder."},
      {0xA3012012, L"The backup folder could not be made."},
      {0xA3013000, L"An expected entry is missing in the data."},
      {0xA3013001, L"The data is malformed, or an entry is not of the expected type."},
      {0xA3013005, L"The PLM client gave no answer."},
      {0xA3017001, L"The path of the backup folder is not valid."},
  };
  for (const auto& [code, text] : texts) EXPECT_EQ(TextOf(static_cast<long>(code)), text);
}

TEST(ErrorText, OfOtherCodesIsTheTextOfTheSystem) {
  const HRESULT codes[] = {E_FAIL,
                           E_OUTOFMEMORY,
                           E_INVALIDARG,
                           E_ACCESSDENIED,
                           HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND),
                           HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION)};
  std::set<std::wstring> texts;
  for (const HRESULT code : codes) {
    const std::wstring text = TextOf(code);
    EXPECT_EQ(text.find(L"Unknown error"), std::wstring::npos) << std::hex << code;
    EXPECT_EQ(text.find_last_not_of(L" \t\r\n") + 1, text.size()) << "ends with white space";
    texts.insert(text);
  }
  EXPECT_EQ(texts.size(), std::size(codes)) << "each code has a different text";
}

TEST(ErrorText, OfAnUnknownCodeNamesTheCode) {
  EXPECT_EQ(TextOf(static_cast<long>(0xA3FFFFFF)), L"Unknown error 0xa3ffffff.");
  EXPECT_EQ(TextOf(static_cast<long>(0x8BAD0001)), L"Unknown error 0x8bad0001.");
}

TEST(ErrorText, ComesFromASingleton) {
  EXPECT_EQ(&CZALCIHandlerContextHelper::Instance(), &CZALCIHandlerContextHelper::Instance());
}
}  // namespace
