#include "temporary_materials_panel.h"

#include "answer_json.h"
#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {

TemporaryMaterialsPanel::TemporaryMaterialsPanel(PanelContext context)
    : MaterialListPanel(std::move(context)) {
  Show(Vault().TemporaryMaterials(Context().user));
}

unsigned TemporaryMaterialsPanel::Title() const { return IDS_COMMAND_TEMPORARY_MATERIALS; }

std::vector<Action> TemporaryMaterialsPanel::Actions() const {
  return {{L"done", IDS_ACTION_DONE}, {L"keep", IDS_ACTION_KEEP, !Selection().empty()}};
}

std::wstring TemporaryMaterialsPanel::Preview(const std::wstring&) const {
  return AnswerJson().Texts("materials", NumbersOf(Selected())).Done();
}

std::optional<std::wstring> TemporaryMaterialsPanel::OnAction(const std::wstring& action) {
  if (action == L"done") return Preview(action);
  const std::vector<std::wstring> numbers = NumbersOf(Selected());
  for (const std::wstring& number : numbers) Vault().KeepMaterial(number);
  Say(Filled(Text(IDS_SAID_KEPT), Joined(numbers)));
  Show(Vault().TemporaryMaterials(Context().user));
  return std::nullopt;
}

}  // namespace plm_panels
