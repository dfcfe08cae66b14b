// The application object: the module from which resources are loaded, and its message box.
#include <gtest/gtest.h>

#include <thread>

#include "host_window.h"
#include "linked_module.h"
#include "message_boxes.h"
#include "module/application.h"
#include "module/module_state.h"
#include "module/string_table.h"
#include "resources/resource_ids.h"
#include "user_language.h"

namespace {

class Application : public testing::Test {
 protected:
  static HINSTANCE Current() { return ModuleState::ResourceModule(); }
  static HINSTANCE Program() { return GetModuleHandleW(nullptr); }

  LinkedModule m_module;
  const UserLanguage m_english{MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)};
};

}  // namespace

TEST_F(Application, HasLabelsOfTheErrorBoxInTheLanguageOfTheUser) {
  const auto both = [] {
    const CDisplayErrorMsg::Labels labels = CSolidWorksAddInApp::Instance().ErrorBoxLabels();
    return labels.error_code + L" " + labels.log_folder;
  };
  EXPECT_EQ(both(), L"Error code: Log folder:");
  {
    const UserLanguage simplified(MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED));
    EXPECT_EQ(both(), L"错误代码: 日志文件夹:");
  }
  const UserLanguage traditional(MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_TRADITIONAL));
  EXPECT_EQ(both(), L"錯誤代碼: 日誌資料夾:");
}

TEST_F(Application, LoadsResourcesFromTheDllOnlyDuringAModuleState) {
  EXPECT_EQ(Current(), Program());
  EXPECT_EQ(LoadResourceString(IDS_LOAD_MODEL), L"");
  {
    const ModuleState state;
    EXPECT_EQ(Current(), m_module.Handle());
    EXPECT_EQ(LoadResourceString(IDS_LOAD_MODEL), L"Load Model");
  }
  EXPECT_EQ(Current(), Program());
}

TEST_F(Application, ModuleStatesNest) {
  const ModuleState outer;
  { const ModuleState inner; }
  EXPECT_EQ(Current(), m_module.Handle());
}

TEST_F(Application, ModuleStatesAffectOnlyTheirThread) {
  const ModuleState state;
  HINSTANCE other_thread = nullptr;
  std::thread([&other_thread] { other_thread = Current(); }).join();
  EXPECT_EQ(other_thread, Program());
}

TEST_F(Application, AModuleStateEndsWithAnException) {
  try {
    const ModuleState state;
    throw 1;
  } catch (int) {
  }
  EXPECT_EQ(Current(), Program());
  EXPECT_TRUE(CSolidWorksAddInApp::Instance().CanUnload());
}

TEST_F(Application, CannotBeUnloadedDuringAModuleState) {
  EXPECT_TRUE(CSolidWorksAddInApp::Instance().CanUnload());
  const ModuleState state;
  EXPECT_FALSE(CSolidWorksAddInApp::Instance().CanUnload());
}

TEST_F(Application, LoadsItsTitleFromTheStringTable) {
  EXPECT_EQ(CSolidWorksAddInApp::Instance().Title(), L"Collaborative management");
}

TEST_F(Application, ShowsABoxWithTitleOkButtonAndExclamationIcon) {
  MessageBoxRecorder boxes{IDOK};
  EXPECT_EQ(CSolidWorksAddInApp::Instance().ShowMessageBox(L"Something is wrong"), IDOK);
  ASSERT_EQ(boxes.Boxes().size(), 1u);
  const RecordedMessageBox& box = boxes.Boxes().front();
  EXPECT_EQ(box.text, L"Something is wrong");
  EXPECT_EQ(box.caption, L"Collaborative management");
  EXPECT_EQ(box.icon, static_cast<UINT>(MB_ICONEXCLAMATION));
  EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
}

TEST_F(Application, MakesTheActiveWindowTheOwnerOfItsBox) {
  const HostWindow active, other;
  SetActiveWindow(active.Handle());
  ASSERT_EQ(GetActiveWindow(), active.Handle());
  MessageBoxRecorder boxes{IDOK};
  CSolidWorksAddInApp::Instance().ShowMessageBox(L"Something is wrong");
  EXPECT_TRUE(active.WasDisabled());
  EXPECT_FALSE(other.WasDisabled());
}

TEST_F(Application, DisablesAllWindowsDuringItsBoxIfNoWindowIsActive) {
  const HostWindow inactive;
  SetActiveWindow(nullptr);
  ASSERT_EQ(GetActiveWindow(), nullptr);
  MessageBoxRecorder boxes{IDOK};
  CSolidWorksAddInApp::Instance().ShowMessageBox(L"Nobody is looking");
  EXPECT_TRUE(inactive.WasDisabled());
}
