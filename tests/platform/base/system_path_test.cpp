#include <gtest/gtest.h>

#include "base/system_path.h"

namespace {

// `start`, filled with letters up to `size` characters.
std::wstring OfSize(const std::wstring& start, std::size_t size) {
  return start + std::wstring(size - start.size(), L'a');
}

TEST(SystemPath, DoesNotChangeShortPaths) {
  for (const wchar_t* start : {L"C:\\", L"C:/x/../", L"\\\\server\\share\\"}) {
    const std::wstring path = OfSize(start, 247);
    EXPECT_EQ(SystemPath(path), path);
  }
  EXPECT_EQ(SystemPath(L""), L"");
}

TEST(SystemPath, DoesNotChangeRelativeOrPrefixedLongPaths) {
  for (const wchar_t* start : {L"models\\", L"..\\models\\", L"\\models\\", L"C:models\\", L"1:\\models\\",
                               L"\\\\?\\C:\\models\\", L"\\\\?\\UNC\\server\\share\\", L"\\\\.\\pipe\\"}) {
    const std::wstring path = OfSize(start, 300);
    EXPECT_EQ(SystemPath(path), path);
  }
}

TEST(SystemPath, PrefixesLongAbsolutePaths) {
  const std::wstring tail(248, L'a');
  const std::pair<std::wstring, std::wstring> paths[] = {
      {L"C:\\" + tail, L"\\\\?\\C:\\" + tail},
      {L"C:/models/" + tail, L"\\\\?\\C:\\models\\" + tail},
      {L"C:\\models\\.\\x\\..\\" + tail, L"\\\\?\\C:\\models\\" + tail},
      {L"C:\\..\\" + tail, L"\\\\?\\C:\\" + tail},
      {L"C:\\models\\\\" + tail, L"\\\\?\\C:\\models\\" + tail},
      {L"\\\\server\\share\\" + tail, L"\\\\?\\UNC\\server\\share\\" + tail},
      {L"//server/share/x/../" + tail, L"\\\\?\\UNC\\server\\share\\" + tail},
      {L"C:\\图纸\\" + tail, L"\\\\?\\C:\\图纸\\" + tail},
  };
  for (const auto& [path, expected] : paths) {
    EXPECT_EQ(SystemPath(path), expected);
  }
}

TEST(SystemPath, PrefixesPathsFromTwoHundredAndFortyEightCharacters) {
  const std::wstring path = OfSize(L"C:\\", 248);
  EXPECT_EQ(SystemPath(path), L"\\\\?\\" + path);
}

}  // namespace
