// The rows of the component tree.
#include "window/tree_rows.h"

#include <gtest/gtest.h>

#include "window/icons.h"

namespace {

using cad_host::Component;
using cad_host::Document;
using cad_host::TreeRows;

std::shared_ptr<Document> Assembly(std::size_t components) {
  auto document = std::make_shared<Document>();
  document->model.type = swDocASSEMBLY;
  for (std::size_t number = 1; number <= components; ++number) {
    auto component = std::make_shared<Component>();
    component->record.name = L"bolt-" + std::to_wstring(number);
    component->record.path = L"C:\\bolt.sldprt";
    document->components.push_back(component);
  }
  return document;
}

class TreeRowsTest : public testing::Test {
 protected:
  const window::Texts m_texts{window::kEnglish};
  TreeRows m_rows{m_texts};
};

TEST_F(TreeRowsTest, WithoutADocumentThereAreNone) {
  m_rows.Show(nullptr);
  EXPECT_EQ(m_rows.Count(), 0u);
}

TEST_F(TreeRowsTest, ARowKnowsItsComponentAndAComponentItsRow) {
  const auto document = Assembly(3);
  m_rows.Show(document);
  constexpr std::size_t kFirst = 2;
  EXPECT_EQ(m_rows.ComponentAt(kFirst + 1), document->components[1]);
  EXPECT_EQ(m_rows.RowOf(document->components[2].get()), 4);
  EXPECT_EQ(m_rows.ComponentAt(0), nullptr);
  EXPECT_EQ(m_rows.RowOf(nullptr), -1);
}

TEST_F(TreeRowsTest, AComponentThatIsGoneHasNoText) {
  const auto document = Assembly(2);
  m_rows.Show(document);
  document->components.clear();  // as an add-in may do before the rows are made anew
  EXPECT_EQ(m_rows.Name(3), L"");
  EXPECT_EQ(m_rows.ComponentAt(3), nullptr);
}

TEST_F(TreeRowsTest, AFolderStaysClosedForTheNextDocument) {
  m_rows.Show(Assembly(2));
  m_rows.SetOpen(1, false);
  EXPECT_EQ(m_rows.Icon(1), cad_host::kClosedFolderIcon);
  m_rows.Show(Assembly(5));
  EXPECT_EQ(m_rows.Count(), 3u);
  m_rows.SetOpen(1, true);
  EXPECT_EQ(m_rows.Count(), 8u);
}

}  // namespace
