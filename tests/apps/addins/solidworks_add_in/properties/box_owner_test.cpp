// The message boxes of the material commands have no owner window, although a window of the host is active.
#include <gtest/gtest.h>

#include "list_difference.h"
#include "module/host_window.h"
#include "properties_fixture.h"

namespace {

class BoxOwner : public PropertiesFixture {
 protected:
  void SetUp() override {
    Answer("QD_PLMCreateMaterial", R"({"data":{"no":"M-1"}})");
    Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x"}})");
    ConnectAndLogIn();
    SetActiveWindow(m_window.Handle());
    m_boxes->WhileUp([this] { SetActiveWindow(m_window.Handle()); });  // before the next box
  }

  /// Picks the command while the host's window is active; the boxes come up and have no owner.
  void PickExpecting(const wchar_t* command, const Texts& boxes) {
    ASSERT_EQ(GetActiveWindow(), m_window.Handle());
    ExpectBoxes(boxes.size());
    Pick(command);
    EXPECT_SAME_ENTRIES(Boxes(), boxes);
    for (const RecordedMessageBox& box : m_boxes->Boxes()) EXPECT_EQ(box.owner, nullptr) << Utf8(box.text);
  }

  HostWindow m_window;
};

TEST_F(BoxOwner, IsMissingInTheQuestionsAndTheNotice) {
  OpenPartWithThree();
  PickExpecting(L"PlmCreateMaterial", {L"extract?", L"backfill?", L"completed"});
}

TEST_F(BoxOwner, IsMissingIfNoModelIsLoaded) { PickExpecting(L"PlmMaterialBackFill", {L"no model"}); }

TEST_F(BoxOwner, IsMissingInTheErrorMessage) {
  OpenPartWithThree();
  m_host->GetFaults().Fail(L"ICustomPropertyManager::Set", 1, E_FAIL);
  PickExpecting(L"PlmMaterialBackFill", {L"error 0x80004005"});
}

}  // namespace
