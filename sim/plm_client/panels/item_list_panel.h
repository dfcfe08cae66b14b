/// @file The base of panels that show a list of the vault's items.
#pragma once

#include "panels/panel.h"

namespace plm_panels {

/// A list of items, and details of the one that is selected: its properties and its revisions.
class ItemListPanel : public Panel {
 public:
  using Panel::Panel;

  std::vector<Column> Columns() const override;
  std::size_t RowCount() const override { return m_items.size(); }
  std::wstring Cell(std::size_t row, std::size_t column) const override;
  plm_vault::Properties Details() const override;

 protected:
  const std::vector<plm_vault::Item>& Items() const { return m_items; }

  /// Shows other items. Those that were selected and are still there stay selected.
  void Show(std::vector<plm_vault::Item> items);

  std::vector<plm_vault::Item> Selected() const;
  std::vector<std::wstring> SelectedNumbers() const;

 private:
  std::vector<plm_vault::Item> m_items;
};

/// "{"OpenFile":[...]}" and the like.
std::wstring PathsAnswer(std::string_view member, const std::vector<std::filesystem::path>& paths);

}  // namespace plm_panels
