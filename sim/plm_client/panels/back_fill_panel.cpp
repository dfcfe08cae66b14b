#include "back_fill_panel.h"

#include <algorithm>

#include "answer_json.h"
#include "panels/text_ids.h"

namespace plm_panels {
namespace {

/// What a document says of its material, beside what the material keeps.
constexpr const wchar_t* kNumberProperty = L"Number";

}  // namespace

BackFillPanel::BackFillPanel(PanelContext context, const plm_vault::Properties& created)
    : MaterialListPanel(std::move(context)) {
  Show(Vault().FindMaterials({}));
  for (const auto& [name, value] : created) {
    if (name == L"number") SelectNumber(value);
  }
}

unsigned BackFillPanel::Title() const { return IDS_COMMAND_BACK_FILL; }

std::vector<Field> BackFillPanel::Fields() const {
  return {{L"search", IDS_LABEL_SEARCH, FieldKind::kText, m_words}};
}

std::vector<Action> BackFillPanel::Actions() const {
  return {{L"fill", IDS_ACTION_FILL, !Selection().empty()}, {L"nothing", IDS_ACTION_NOTHING}};
}

std::wstring BackFillPanel::Preview(const std::wstring& action) const {
  // The host looks for exactly these two characters.
  if (action == L"nothing" || Selection().empty()) return L"{}";
  const plm_vault::Material material = Selected().front();
  plm_vault::Properties properties = material.properties;
  std::erase_if(properties, [](const auto& property) { return property.first == kNumberProperty; });
  properties.insert(properties.begin(), {kNumberProperty, material.number});
  return AnswerJson().Object("material_property_back_fill", properties).Done();
}

void BackFillPanel::OnField(const Field&, const std::wstring& value) {
  m_words = value;
  Show(Vault().FindMaterials(m_words));
}

}  // namespace plm_panels
