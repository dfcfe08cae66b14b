#include "item_list_panel.h"

#include <algorithm>

#include "answer_json.h"
#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {

using plm_vault::Item;

std::vector<Column> ItemListPanel::Columns() const {
  return {{IDS_LABEL_NUMBER, 60}, {IDS_LABEL_NAME, 130},    {IDS_LABEL_FILE, 112},
          {IDS_LABEL_KIND, 62},   {IDS_LABEL_REVISION, 54}, {IDS_LABEL_CHECKED_OUT_BY, 74},
          {IDS_LABEL_STATE, 58}};
}

std::wstring ItemListPanel::Cell(std::size_t row, std::size_t column) const {
  const Item& item = m_items.at(row);
  switch (column) {
    case 0:
      return item.number;
    case 1:
      return item.name;
    case 2:
      return item.file_name;
    case 3:
      return TextOf(Context().text, item.kind);
    case 4:
      return plm_vault::RevisionLabel(item.revision);
    case 5:
      return item.checked_out_by;
    default:
      return TextOf(Context().text, item.state);
  }
}

plm_vault::Properties ItemListPanel::Details() const {
  if (Selection().size() != 1) return {};
  const Item& item = m_items.at(Selection().front());
  plm_vault::Properties details = PropertiesOf(Vault().FileOf(item, item.revision));
  for (const plm_vault::Revision& revision : Vault().Revisions(item.number)) {
    details.emplace_back(
        Text(IDS_LABEL_REVISION) + L" " + plm_vault::RevisionLabel(revision.revision),
        revision.at + L", " + revision.author + (revision.comment.empty() ? L"" : L": " + revision.comment));
  }
  return details;
}

void ItemListPanel::Show(std::vector<Item> items) {
  const std::vector<std::wstring> selected = SelectedNumbers();
  m_items = std::move(items);
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < m_items.size(); ++row) {
    if (std::ranges::count(selected, m_items[row].number) > 0) rows.push_back(row);
  }
  Select(std::move(rows));
}

std::vector<Item> ItemListPanel::Selected() const {
  std::vector<Item> selected;
  selected.reserve(Selection().size());
  for (const std::size_t row : Selection()) selected.push_back(m_items.at(row));
  return selected;
}

std::vector<std::wstring> ItemListPanel::SelectedNumbers() const {
  std::vector<std::wstring> numbers;
  numbers.reserve(Selection().size());
  for (const std::size_t row : Selection()) numbers.push_back(m_items.at(row).number);
  return numbers;
}

std::wstring PathsAnswer(std::string_view member, const std::vector<std::filesystem::path>& paths) {
  std::vector<std::wstring> texts;
  texts.reserve(paths.size());
  for (const std::filesystem::path& path : paths) texts.push_back(path.wstring());
  return AnswerJson().Texts(member, texts).Done();
}

}  // namespace plm_panels
