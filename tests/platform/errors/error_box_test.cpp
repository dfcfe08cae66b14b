#include <gtest/gtest.h>

#include <gtest/gtest-spi.h>
#include <windows.h>

#include "CDisplayErrorMsg.h"
#include "environment.h"
#include "message_boxes.h"
#include "temp_folder.h"

namespace {
class ErrorBox : public testing::Test {
 protected:
  long Display(HRESULT code, unsigned style) {
    return CDisplayErrorMsg::Display(CZALCIHandlerContextHelper::Instance().GetErrorMsg(code), style);
  }
  TempFolder m_home;
  ScopedEnvironment m_environment{L"TAVO_HOME", m_home.Path()};
};

TEST_F(ErrorBox, ShowsTextCodeAndLogFolder) {
  MessageBoxRecorder boxes({IDOK});
  EXPECT_EQ(Display(static_cast<HRESULT>(0xA3013005), MB_ICONERROR), IDOK);
  ASSERT_EQ(boxes.Boxes().size(), 1u);
  EXPECT_EQ(boxes.Boxes()[0].text, L"The PLM client gave no answer.\n\nError code: 0xa3013005\nLog folder: " +
                                       m_home.Path() + L"\\log");
  EXPECT_EQ(boxes.Boxes()[0].caption, L"TAVO");
  EXPECT_EQ(boxes.Boxes()[0].icon, static_cast<UINT>(MB_ICONERROR));
  EXPECT_EQ(boxes.Boxes()[0].buttons, std::vector<int>{IDOK});
}

TEST_F(ErrorBox, ShowsTheWholeTextInAnyScript) {
  const std::wstring text = L"当前未加载模型 \U0001F529 & 100% " + std::wstring(500, L'x');
  MessageBoxRecorder boxes({IDOK});
  CDisplayErrorMsg::Display({E_FAIL, text}, MB_ICONERROR);
  ASSERT_EQ(boxes.Boxes().size(), 1u);
  EXPECT_TRUE(boxes.Boxes()[0].text.starts_with(text + L"\n\nError code: 0x80004005\n"));
}

TEST_F(ErrorBox, HasTheStyleThatIsAskedFor) {
  MessageBoxRecorder boxes({IDCANCEL, IDOK});
  EXPECT_EQ(Display(E_FAIL, MB_OKCANCEL | MB_ICONWARNING), IDCANCEL);
  EXPECT_EQ(Display(E_FAIL, MB_OK), IDOK);
  ASSERT_EQ(boxes.Boxes().size(), 2u);
  EXPECT_EQ(boxes.Boxes()[0].icon, static_cast<UINT>(MB_ICONWARNING));
  EXPECT_EQ(boxes.Boxes()[0].buttons, (std::vector<int>{IDOK, IDCANCEL}));
  EXPECT_EQ(boxes.Boxes()[1].icon, 0u);
}

TEST_F(ErrorBox, CanBeClosed) {
  MessageBoxRecorder boxes({MessageBoxRecorder::kClose, MessageBoxRecorder::kClose});
  EXPECT_NE(Display(E_FAIL, MB_ICONERROR), 0);
  EXPECT_EQ(Display(E_FAIL, MB_OKCANCEL), IDCANCEL);
}

TEST_F(ErrorBox, IsNotShownForASuccess) {
  MessageBoxRecorder boxes;
  for (const HRESULT code : {S_OK, S_FALSE, static_cast<HRESULT>(0x7FFFFFFF)}) {
    EXPECT_EQ(Display(code, MB_ICONERROR), 0);
  }
  EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ErrorBox, TakesItsCaptionFromTheModule) {
  CDisplayErrorMsg::SetCaptionSource([] { return std::wstring(L"协同管理"); });
  MessageBoxRecorder boxes({IDOK, IDOK});
  Display(E_FAIL, MB_ICONERROR);
  CDisplayErrorMsg::SetCaptionSource(nullptr);
  Display(E_FAIL, MB_ICONERROR);
  ASSERT_EQ(boxes.Boxes().size(), 2u);
  EXPECT_EQ(boxes.Boxes()[0].caption, L"协同管理");
  EXPECT_EQ(boxes.Boxes()[1].caption, L"TAVO");
}

TEST_F(ErrorBox, TakesItsLabelsFromTheModule) {
  CDisplayErrorMsg::SetLabelSource([] { return CDisplayErrorMsg::Labels{L"错误代码:", L"日志文件夹:"}; });
  MessageBoxRecorder boxes({IDOK, IDOK, IDOK});
  CDisplayErrorMsg::Display({E_FAIL, L"text"}, MB_ICONERROR);
  CDisplayErrorMsg::SetLabelSource([] { return CDisplayErrorMsg::Labels{}; });
  CDisplayErrorMsg::Display({E_FAIL, L"text"}, MB_ICONERROR);
  CDisplayErrorMsg::SetLabelSource(nullptr);
  CDisplayErrorMsg::Display({E_FAIL, L"text"}, MB_ICONERROR);

  const std::wstring log = m_home.Path() + L"\\log";
  const std::wstring english = L"text\n\nError code: 0x80004005\nLog folder: " + log;
  ASSERT_EQ(boxes.Boxes().size(), 3u);
  EXPECT_EQ(boxes.Boxes()[0].text, L"text\n\n错误代码: 0x80004005\n日志文件夹: " + log);
  EXPECT_EQ(boxes.Boxes()[1].text, english);
  EXPECT_EQ(boxes.Boxes()[2].text, english);
}

TEST_F(ErrorBox, DisablesTheHostsWindowsWhileItIsOpen) {
  HWND host = CreateWindowW(L"Static", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 100, 100, nullptr,
                            nullptr, nullptr, nullptr);
  ASSERT_NE(host, nullptr);
  static HWND seen_host;
  static BOOL enabled_behind_box;
  seen_host = host;
  // Runs while the box is open.
  const UINT_PTR timer = SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    enabled_behind_box = IsWindowEnabled(seen_host);
    EndDialog(GetActiveWindow(), IDOK);
  });
  ASSERT_NE(timer, 0u);
  Display(E_FAIL, MB_ICONERROR);
  EXPECT_FALSE(enabled_behind_box);
  EXPECT_TRUE(IsWindowEnabled(host));
  DestroyWindow(host);
}

// The next tests check the helper MessageBoxRecorder: it must fail the test in these cases.
void ShowUnexpectedBox() {
  MessageBoxRecorder boxes;
  MessageBoxW(nullptr, L"surprise", L"caption", MB_YESNO);
}

void ExpectMissingBox() { MessageBoxRecorder boxes({IDOK}); }

void AnswerWithMissingButton() {
  MessageBoxRecorder boxes({IDYES});
  MessageBoxW(nullptr, L"text", L"caption", MB_OK);
}

TEST(MessageBoxRecorder, FailsTheTestForAnUnexpectedBox) {
  EXPECT_NONFATAL_FAILURE(ShowUnexpectedBox(), "unexpected message box: caption: surprise");
}

TEST(MessageBoxRecorder, FailsTheTestForAMissingBox) {
  EXPECT_NONFATAL_FAILURE(ExpectMissingBox(), "1 expected message box(es) did not come up");
}

TEST(MessageBoxRecorder, FailsTheTestForAMissingButton) {
  EXPECT_NONFATAL_FAILURE(AnswerWithMissingButton(), "no button 6 on message box");
}
}  // namespace
