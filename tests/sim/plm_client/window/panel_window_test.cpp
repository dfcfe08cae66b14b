#include "panel_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "CStringHelper.h"
#include "control_ids.h"
#include "panels/make_panel.h"
#include "resource_ids.h"
#include "temp_folder.h"
#include "window/message_loop.h"

using namespace plm_window;

namespace {

class PanelWindowTest : public testing::Test {
 protected:
  PanelWindowTest() {
    m_vault.AddUser({L"kim", L"Kim"});
    m_vault.AddUser({L"wang", L"Wang"});
    for (const wchar_t* const name : {L"bolt.sldprt", L"nut.sldprt"}) {
      m_vault.Import(m_folder.Write(name, "content"), L"kim", {}, {});
    }
  }

  PanelWindow& Open(const std::string& command, const std::string& request = "") {
    auto panel =
        plm_panels::MakePanel(command, request,
                              {.vault = m_vault,
                               .session = m_session,
                               .text = [this](unsigned id) { return m_texts(id); },
                               .read_properties = [](const auto&) { return plm_vault::Properties{}; },
                               .user = L"kim"});
    m_window = std::make_unique<PanelWindow>(
        std::move(panel), m_texts,
        PanelWindowSettings{.command = command,
                            .request = L"the request",
                            .user = L"kim",
                            .refuses_faults = [this] { return m_refusesFaults; },
                            .answer = [this](const std::wstring& answer) { m_answers.push_back(answer); },
                            .layout_file = m_folder.Path(L"layout.txt")});
    m_window->Present();
    return *m_window;
  }

  HWND Control(int id) const { return GetDlgItem(m_window->Handle(), id); }
  HWND AnswerControl(int id) const { return GetDlgItem(Control(kAnswerPart), id); }
  static void Click(HWND button) { SendMessageW(button, BM_CLICK, 0, 0); }

  void PassOnMessagesUntilAnswered() {
    window::MessageLoop loop(m_window->Handle(), nullptr);
    for (int tries = 0; tries < 800 && m_answers.empty(); ++tries) {
      loop.PassOnWaiting();
      Sleep(10);
    }
  }

  /// A key that goes the way of the keyboard's.
  void PressKey(WPARAM key) {
    PostMessageW(GetFocus() ? GetFocus() : m_window->Handle(), WM_KEYDOWN, key, 1);
    window::MessageLoop(m_window->Handle(), nullptr).PassOnWaiting();
  }

  TempFolder m_folder;
  plm_vault::Vault m_vault = plm_vault::Vault::Create(m_folder.Path(L"vault"));
  plm_panels::Session m_session;
  window::Texts m_texts{window::kEnglish};
  bool m_refusesFaults = true;
  std::vector<std::wstring> m_answers;
  std::unique_ptr<PanelWindow> m_window;
};

TEST_F(PanelWindowTest, HasTheCommandsNameInItsTitleAndTheAnswerThatWouldBeSent) {
  PanelWindow& window = Open("QD_PLMDataSelector");
  EXPECT_EQ(window::TextOfWindow(window.Handle()), L"PLM - Data selector");
  EXPECT_EQ(window::TextOfWindow(AnswerControl(kRequestText)), L"the request");
  EXPECT_FALSE(IsWindowEnabled(Control(kFirstAction)));
  window.SelectRows({L"bolt.sldprt"});
  EXPECT_TRUE(IsWindowEnabled(Control(kFirstAction)));
  EXPECT_NE(window::TextOfWindow(AnswerControl(kAnswerText)).find(L"work\\\\bolt.sldprt"),
            std::wstring::npos);
}

TEST_F(PanelWindowTest, AnswersOnceWithTheButtonThatWasPressed) {
  Open("QD_PLMDataSelector").SelectRows({L"nut.sldprt"});
  Click(Control(kFirstAction));
  Click(Control(kFirstAction));
  ASSERT_EQ(m_answers.size(), 1u);
  EXPECT_NE(m_answers[0].find(L"\"OpenFile\""), std::wstring::npos);
  EXPECT_FALSE(IsWindowVisible(m_window->Handle()));
}

TEST_F(PanelWindowTest, SelectsWhatThePersonSelectsInTheList) {
  PanelWindow& window = Open("QD_PLMDataSelector");
  HWND list = Control(kRowList);
  EXPECT_EQ(ListView_GetItemCount(list), 2);
  ListView_SetItemState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_EQ(window.Panel().Selection(), std::vector<std::size_t>{1});
  ListView_SetItemState(list, 0, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_EQ(window.Panel().Selection(), (std::vector<std::size_t>{0, 1}));
}

TEST_F(PanelWindowTest, FindsWhatThePersonTypes) {
  Open("QD_PLMQuery");
  SetWindowTextW(Control(kFirstField), L"nut");
  EXPECT_EQ(ListView_GetItemCount(Control(kRowList)), 1);
  EXPECT_EQ(m_window->Panel().Cell(0, 2), L"nut.sldprt");
}

TEST_F(PanelWindowTest, EscapeCancelAndTheCloseButtonAnswerNothing) {
  const std::function<void()> ways[] = {[this] { PressKey(VK_ESCAPE); }, [this] { Click(Control(IDCANCEL)); },
                                        [this] { SendMessageW(m_window->Handle(), WM_CLOSE, 0, 0); }};
  for (const auto& way : ways) {
    m_answers.clear();
    Open("QD_PLMDataSelector");
    way();
    EXPECT_EQ(m_answers, std::vector<std::wstring>{L""});
  }
}

TEST_F(PanelWindowTest, EnterPressesTheDefaultButton) {
  Open("QD_PLMDataSelector").SelectRows({L"nut.sldprt"});
  PressKey(VK_RETURN);
  ASSERT_EQ(m_answers.size(), 1u);
  EXPECT_NE(m_answers[0].find(L"nut.sldprt"), std::wstring::npos);
}

TEST_F(PanelWindowTest, TabGoesToEachControlInItsOrder) {
  Open("QD_PLMDataSelector").SelectRows({L"nut.sldprt"});
  SetFocus(Control(kFirstField));
  for (const int id : {kFirstField + 1, kFirstField + 2, static_cast<int>(kRowList),
                       static_cast<int>(kDetailList), static_cast<int>(kFirstAction)}) {
    PressKey(VK_TAB);
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), id);
  }
}

TEST_F(PanelWindowTest, ShowsAFailureAndStays) {
  m_vault.CheckOut(L"P-00001", L"wang");
  PanelWindow& window = Open("QD_PLMDataSelector");
  window.SelectRows({L"bolt.sldprt"});
  Click(Control(kFirstAction + 4));
  EXPECT_NE(window::TextOfWindow(Control(kMessage)).find(L"checked out by wang"), std::wstring::npos);
  EXPECT_TRUE(m_answers.empty());
}

TEST_F(PanelWindowTest, LetsThePersonEditTheAnswerBeforeItIsSent) {
  Open("QD_PLMDataSelector").SelectRows({L"nut.sldprt"});
  EXPECT_FALSE(IsWindowEnabled(AnswerControl(kSend)));
  Click(AnswerControl(kEditFirst));
  Click(Control(kFirstAction));
  EXPECT_TRUE(m_answers.empty());
  SetWindowTextW(AnswerControl(kAnswerText), L"{\r\n  \"OpenFile\": []\r\n}");
  Click(AnswerControl(kSend));
  EXPECT_EQ(m_answers, std::vector<std::wstring>{L"{\n  \"OpenFile\": []\n}"});
}

TEST_F(PanelWindowTest, MarksAFaultWithItsPlaceAndDoesNotSendIt) {
  Open("QD_PLMDataSelector");
  Click(AnswerControl(kEditFirst));
  const std::wstring text = L"{\r\n  \"a\": 1,\r\n  \"b\": x\r\n}";
  SetWindowTextW(AnswerControl(kAnswerText), text.c_str());
  Click(AnswerControl(kSend));
  EXPECT_TRUE(m_answers.empty());
  EXPECT_TRUE(window::TextOfWindow(AnswerControl(kFault)).starts_with(L"line 3, column 8: "));
  DWORD start = 0, end = 0;
  SendMessageW(AnswerControl(kAnswerText), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
               reinterpret_cast<LPARAM>(&end));
  EXPECT_EQ(start, text.find(L'x')) << "the caret";
  EXPECT_EQ(end, start);

  m_refusesFaults = false;
  Click(AnswerControl(kSend));
  EXPECT_EQ(m_answers.size(), 1u) << "a person who wants to misbehave may";
}

TEST_F(PanelWindowTest, LogsOutByItself) {
  Open("QD_PLMLogout");
  EXPECT_EQ(window::TextOfWindow(Control(kFirstAction)), L"&Log out (4)");
  PassOnMessagesUntilAnswered();
  ASSERT_EQ(m_answers.size(), 1u);
  EXPECT_NE(m_answers[0].find(L"true"), std::wstring::npos);
}

TEST_F(PanelWindowTest, DoesWhatAScriptSays) {
  PanelWindow& window = Open("QD_PLMLogin");
  window.Play(*plm_panels::PersonScript::Parse("QD_PLMLogin user=wang log-in", "").Next("QD_PLMLogin"),
              std::chrono::milliseconds(1));
  PassOnMessagesUntilAnswered();
  ASSERT_EQ(m_answers.size(), 1u);
  EXPECT_NE(m_answers[0].find(L"\"user\": \"wang\""), std::wstring::npos);
}

TEST_F(PanelWindowTest, LeavesToThePersonWhatAScriptCannotDo) {
  PanelWindow& window = Open("QD_PLMDataSelector");
  window.Play(*plm_panels::PersonScript::Parse("A \"no-such.sldprt\" open", "").Next("A"),
              std::chrono::milliseconds(1));
  window::MessageLoop loop(window.Handle(), nullptr);
  for (int tries = 0; tries < 300 && window::TextOfWindow(Control(kMessage)).empty(); ++tries) {
    loop.PassOnWaiting();
    Sleep(10);
  }
  EXPECT_EQ(window::TextOfWindow(Control(kMessage)), L"The list has no row \"no-such.sldprt\".");
  EXPECT_TRUE(m_answers.empty());
}

TEST_F(PanelWindowTest, WritesWhereItsControlsAre) {
  Open("QD_PLMDataSelector");
  RECT place{};
  GetWindowRect(Control(kFirstAction), &place);
  std::wostringstream line;
  line << L"PLM - Data selector\taction.open\t" << place.left << L"\t" << place.top << L"\t"
       << place.right - place.left << L"\t" << place.bottom - place.top << L"\n";
  const std::wstring layout = m_folder.ReadText(L"layout.txt");
  EXPECT_NE(layout.find(line.str()), std::wstring::npos) << testing::PrintToString(layout);
}

/// Every command and language: no control lies over another, or beyond the window, or is too small for its
/// text.
class PanelLayoutTest : public PanelWindowTest,
                        public testing::WithParamInterface<std::tuple<LANGID, const char*>> {};

TEST_P(PanelLayoutTest, HasRoomForEveryControl) {
  m_texts = window::Texts(std::get<0>(GetParam()));
  PanelWindow& window = Open(std::get<1>(GetParam()));
  RECT client{};
  GetClientRect(window.Handle(), &client);
  std::vector<std::pair<int, RECT>> places;
  for (HWND child = GetWindow(window.Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    RECT place{};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, window.Handle(), reinterpret_cast<POINT*>(&place), 2);
    const int id = GetDlgCtrlID(child);
    EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= client.right &&
                place.bottom <= client.bottom)
        << "control " << id << " lies outside";
    for (const auto& [other_id, other] : places) {
      RECT both{};
      EXPECT_FALSE(IntersectRect(&both, &place, &other)) << "control " << id << " lies over " << other_id;
    }
    places.emplace_back(id, place);
    if (id == kMessage || (id >= kFirstField && id < kFirstFieldLabel)) continue;  // they may hold any text
    const auto font = reinterpret_cast<HFONT>(SendMessageW(child, WM_GETFONT, 0, 0));
    const std::wstring text = window::TextOfWindow(child);
    if (!font || text.empty()) continue;
    EXPECT_GE(place.right - place.left, window::SizeOfText(font, text).cx) << "control " << id;
  }
  EXPECT_GT(places.size(), 4u);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, PanelLayoutTest,
    testing::Combine(
        testing::Values(window::kEnglish, window::kSimplifiedChinese, window::kTraditionalChinese),
        testing::Values("QD_PLMLogin", "QD_PLMLogout", "QD_PLMDataSelector", "QD_PLMQuery",
                        "QD_PLMMyCheckOutList", "QD_PLMTaskManage", "QD_PLMStartWF", "QD_PLMGetcode",
                        "QD_PLMMyTempMaterial", "QD_PLMImportCurrent", "QD_PLMCreateChangeItems",
                        "QD_PLMLotimport", "QD_PLMCreateMaterial", "QD_PLMMaterialBackFill")),
    [](const auto& command) {
      return "Language" + std::to_string(std::get<0>(command.param)) + std::get<1>(command.param);
    });

}  // namespace
