/// @file QD_PLMMyCheckOutList.
#pragma once

#include "item_list_panel.h"

namespace plm_panels {

/// What the user has checked out; the person opens some of it, or gives it back.
class CheckOutListPanel : public ItemListPanel {
 public:
  explicit CheckOutListPanel(PanelContext context);

  unsigned Title() const override;
  std::vector<Column> Columns() const override;
  std::wstring Cell(std::size_t row, std::size_t column) const override;
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  std::optional<std::wstring> OnAction(const std::wstring& action) override;
};

}  // namespace plm_panels
