// Files with long paths, and files that another program has open, which only Windows has.
#include <windows.h>

#include <memory>

#include "json_test_support.h"
#include "temp_folder.h"

namespace {

TEST(WindowsFiles, MayHavePathsOfMoreThan260Characters) {
  const TempFolder folder;
  const std::wstring deep(200, L'd');
  const std::wstring path = folder.Write(deep + L"\\" + deep + L"\\View.json", R"({"a":"x"})");
  ASSERT_GT(path.size(), 400u);
  CJsonObject json;
  json.CreateFromFile(path);
  EXPECT_EQ(json.GetStringValue(L"a"), L"x");
}

TEST(WindowsFiles, WithLongPathsAreReportedWithThePathAsGiven) {
  const TempFolder folder;
  const std::wstring deep(200, L'd');
  const std::wstring path = folder.Write(deep + L"\\" + deep + L"\\View.json", "{");
  ExpectException(kWrongType, L"\"" + path + L"\", line 1, column 2: Missing a name for object member.",
                  [&] { CJsonObject().CreateFromFile(path); });
}

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<HANDLE, HandleCloser>;

UniqueHandle Open(const std::wstring& path, DWORD sharing) {
  return UniqueHandle(
      CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
}

TEST(WindowsFiles, AreReadWhileAnotherProgramWritesThem) {
  const TempFolder folder;
  const std::wstring path = folder.Write(L"View.json", "{}");
  const UniqueHandle writer = Open(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
  CJsonObject json;
  json.SetStringValue(L"before", L"x");
  json.CreateFromFile(path);
  EXPECT_EQ(json.ToJson(), L"{}");
}

TEST(WindowsFiles, ThatAreLockedAreReportedWithTheReason) {
  const TempFolder folder;
  const std::wstring path = folder.Write(L"View.json", "{}");
  const UniqueHandle owner = Open(path, 0);
  const CZALException exception = ExceptionOf([&] { CJsonObject().CreateFromFile(path); });
  EXPECT_EQ(exception.GetErrorCode(), kWrongType);
  EXPECT_TRUE(exception.GetErrorMessage().starts_with(L"cannot read \"" + path + L"\": "));
  EXPECT_TRUE(exception.GetErrorMessage().ends_with(L"(error 32)"))
      << testing::PrintToString(exception.GetErrorMessage());
}

}  // namespace
