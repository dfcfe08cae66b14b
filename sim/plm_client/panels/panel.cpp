#include "panels/panel.h"

#include <algorithm>

#include "panels/text_ids.h"

namespace plm_panels {

void Panel::SetField(std::wstring_view name, const std::wstring& value) {
  for (const Field& field : Fields()) {
    if (field.name != name || field.kind == FieldKind::kShown) continue;
    const auto is_meant = [&](const Choice& choice) {
      return choice.value == value || choice.label == value;
    };
    const auto choice = std::ranges::find_if(field.choices, is_meant);
    if (field.kind == FieldKind::kChoice && choice == field.choices.end()) {
      throw plm_vault::VaultError(L"\"" + field.name + L"\" has no choice \"" + value + L"\"");
    }
    OnField(field, field.kind == FieldKind::kChoice ? choice->value : value);
    return;
  }
  throw plm_vault::VaultError(L"there is no field \"" + std::wstring(name) + L"\" to fill in");
}

void Panel::OnField(const Field&, const std::wstring&) {}

std::wstring Panel::Cell(std::size_t, std::size_t) const { return {}; }

void Panel::Select(std::vector<std::size_t> rows) {
  std::erase_if(rows, [this](std::size_t row) { return row >= RowCount(); });
  std::ranges::sort(rows);
  if (!AllowsSeveralRows() && rows.size() > 1) rows.resize(1);
  m_selection = std::move(rows);
  OnSelect();
}

plm_vault::Properties Panel::PropertiesOf(const std::filesystem::path& file) const {
  try {
    return m_context.read_properties(file);
  } catch (const plm_vault::VaultError& failure) {  // such as a file that the host keeps to itself
    return {{Text(IDS_LABEL_FILE), failure.Message()}};
  }
}

std::optional<std::wstring> Panel::Perform(const std::wstring& action) {
  const std::vector<Action> actions = Actions();
  const auto found = std::ranges::find(actions, action, &Action::name);
  if (found == actions.end()) throw plm_vault::VaultError(L"there is no action \"" + action + L"\"");
  if (!found->is_enabled) throw plm_vault::VaultError(L"\"" + action + L"\" is not possible now");
  m_message.clear();
  return OnAction(action);
}

}  // namespace plm_panels
