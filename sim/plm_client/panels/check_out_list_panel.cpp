#include "check_out_list_panel.h"

#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {

CheckOutListPanel::CheckOutListPanel(PanelContext context) : ItemListPanel(std::move(context)) {
  Show(Vault().CheckedOutBy(Context().user));
}

unsigned CheckOutListPanel::Title() const { return IDS_COMMAND_CHECK_OUT_LIST; }

std::vector<Column> CheckOutListPanel::Columns() const {
  return {{IDS_LABEL_NUMBER, 70}, {IDS_LABEL_NAME, 160}, {IDS_LABEL_FILE, 140}, {IDS_LABEL_SINCE, 120}};
}

std::wstring CheckOutListPanel::Cell(std::size_t row, std::size_t column) const {
  return column == 3 ? Items().at(row).checked_out_at : ItemListPanel::Cell(row, column);
}

std::vector<Action> CheckOutListPanel::Actions() const {
  return {{L"open", IDS_ACTION_OPEN, !Selection().empty()},
          {L"undo-check-out", IDS_ACTION_UNDO_CHECK_OUT, !Selection().empty()}};
}

std::wstring CheckOutListPanel::Preview(const std::wstring&) const {
  std::vector<std::filesystem::path> paths;
  for (const plm_vault::Item& item : Selected()) paths.push_back(Vault().WorkFile(item));
  return PathsAnswer("OpenFile", paths);
}

std::optional<std::wstring> CheckOutListPanel::OnAction(const std::wstring& action) {
  if (action == L"open") {
    for (const plm_vault::Item& item : Selected()) Vault().HandOut(item, item.revision);
    return Preview(action);
  }
  for (const std::wstring& number : SelectedNumbers()) Vault().UndoCheckOut(number, Context().user);
  Say(Filled(Text(IDS_SAID_CHECK_OUT_UNDONE), Joined(SelectedNumbers())));
  Show(Vault().CheckedOutBy(Context().user));
  return std::nullopt;
}

}  // namespace plm_panels
