// Printing to a console of the system.
#include "output/console.h"

#include <gtest/gtest.h>

#include <windows.h>

#include "base/unique_handle.h"

namespace {

/// A new console of this process, to which the standard output goes.
class OwnConsole {
 public:
  OwnConsole() {
    FreeConsole();
    m_isThere = AllocConsole();
    m_screen = OwnHandle(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
    SetStdHandle(STD_OUTPUT_HANDLE, m_screen.get());
  }
  OwnConsole(const OwnConsole&) = delete;
  OwnConsole& operator=(const OwnConsole&) = delete;
  ~OwnConsole() {
    SetStdHandle(STD_OUTPUT_HANDLE, m_before);
    FreeConsole();
  }

  bool IsThere() const { return m_isThere && m_screen; }

  /// The beginning of the line `number`, from 0.
  std::wstring Line(SHORT number, DWORD length) const {
    std::wstring text(length, L'\0');
    DWORD read = 0;
    ReadConsoleOutputCharacterW(m_screen.get(), text.data(), length, {0, number}, &read);
    text.resize(read);
    return text;
  }

 private:
  HANDLE m_before = GetStdHandle(STD_OUTPUT_HANDLE);
  bool m_isThere;
  UniqueHandle m_screen;
};

TEST(Console, ShowsTextsInAnyScript) {
  const OwnConsole console;
  ASSERT_TRUE(console.IsThere());
  doctor::Print(L"C:\\\u5BA2\u6237\\a\nnext\n");
  const std::wstring first = console.Line(0, 12);
  EXPECT_TRUE(first.starts_with(L"C:\\\u5BA2")) << testing::PrintToString(first);
  EXPECT_NE(first.find(L'\u6237'), std::wstring::npos);
  EXPECT_EQ(console.Line(1, 4), L"next");
}

}  // namespace
