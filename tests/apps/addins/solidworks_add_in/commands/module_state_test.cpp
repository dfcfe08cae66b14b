// Every command runs in the add-in's module state, also those that show no text and load none.
#include <gtest/gtest.h>

#include <atomic>

#include "add_in_fixture.h"
#include "class_under_test.h"
#include "module/module_state.h"

namespace {

class CommandModuleState : public ConnectedClass<AddInFixture>,
                           public testing::WithParamInterface<DirectCommand> {};

TEST_P(CommandModuleState, HoldsWhileTheCommandWaitsAndEndsWithIt) {
  ASSERT_EQ(m_class->PlmLogin(), S_OK);
  m_host->Open(MakeModel(L"a.sldprt"));
  if (GetParam().name == std::wstring_view(L"PlmCreateMaterial")) m_boxes->Expect(IDCANCEL);
  std::atomic<int> requests = 0;
  std::atomic<bool> inside = false;
  ServeWith([&](const plm_client::Request&, std::stop_token) {
    ++requests;
    inside = ModuleState::AnyThreadInside();
    return plm_client::Reply::Text("{}");
  });

  (m_class->*GetParam().method)();

  EXPECT_EQ(requests, 1);
  EXPECT_TRUE(inside);
  EXPECT_FALSE(ModuleState::AnyThreadInside());
  ServeWith(std::ref(m_script));
}

INSTANTIATE_TEST_SUITE_P(, CommandModuleState, testing::ValuesIn(kAllCommands),
                         [](const auto& test) { return Utf8(test.param.name); });

}  // namespace
