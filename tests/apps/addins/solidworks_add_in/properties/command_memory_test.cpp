// What the material commands free.
#include <gtest/gtest.h>

#include <functional>

#include "heap_blocks.h"
#include "properties_fixture.h"

namespace {

/// A command, and how many message boxes it shows.
struct MaterialCommand {
  const wchar_t* callback;
  std::size_t boxes;
};

class MaterialCommandMemory : public PropertiesFixture, public testing::WithParamInterface<MaterialCommand> {
 protected:
  static constexpr int kRounds = 40;

  /// Picks the command kRounds times. @return how many blocks of memory are allocated then.
  std::size_t BlocksAfterRounds() {
    for (int round = 0; round < kRounds; ++round) {
      ExpectBoxes(GetParam().boxes);
      EXPECT_EQ(Pick(GetParam().callback).result, S_OK);
    }
    // What the test itself keeps of the rounds:
    m_host->GetJournal().Clear();
    m_boxes.emplace();
    ServeWith(std::ref(m_script));
    return HeapBlockCount();
  }
};

TEST_P(MaterialCommandMemory, IsFreed) {
  Answer("QD_PLMCreateMaterial", R"({"data":{"no":"M-1"}})");
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x","B":"y","C":"z"}})");
  ConnectAndLogIn();
  OpenPartWithThree();

  const std::size_t before = BlocksAfterRounds();
  EXPECT_LT(BlocksAfterRounds(), before + kRounds / 2);
}

INSTANTIATE_TEST_SUITE_P(, MaterialCommandMemory,
                         testing::Values(MaterialCommand{L"PlmCreateMaterial", 3},
                                         MaterialCommand{L"PlmMaterialBackFill", 1}),
                         [](const auto& test) { return Utf8(test.param.callback); });

}  // namespace
