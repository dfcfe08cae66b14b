// Compares the interface ids and slots of the headers with the published ones.
#include <gtest/gtest.h>

#include "case_name.h"
#include "slot_table.h"

namespace {

class SlotTest : public testing::TestWithParam<SlotRow> {};

TEST_P(SlotTest, EqualsThePublishedSlot) { EXPECT_EQ(GetParam().declared_slot, GetParam().published_slot); }

INSTANTIATE_TEST_SUITE_P(, SlotTest, testing::ValuesIn(SlotTable()), [](const auto& test) {
  return std::string(test.param.interface_name) + "_" + test.param.method;
});

class InterfaceIdTest : public testing::TestWithParam<InterfaceRow> {};

TEST_P(InterfaceIdTest, EqualsThePublishedId) {
  wchar_t text[40] = {};
  StringFromGUID2(GetParam().declared_id, text, static_cast<int>(std::size(text)));
  EXPECT_STREQ(text, GetParam().published_id);
}

INSTANTIATE_TEST_SUITE_P(, InterfaceIdTest, testing::ValuesIn(InterfaceTable()), CaseName<InterfaceRow>);

}  // namespace
