#include "create_material_panel.h"

#include "answer_json.h"
#include "panels/text_ids.h"

namespace plm_panels {
namespace {

/// What a new material is called if the person says nothing else.
std::wstring NameFrom(const plm_vault::Properties& properties) {
  for (const wchar_t* const wanted : {L"Description", L"Name", L"\u540d\u79f0", L"\u540d\u7a31"}) {
    for (const auto& [name, value] : properties) {
      if (name == wanted && !value.empty()) return value;
    }
  }
  return {};
}

}  // namespace

CreateMaterialPanel::CreateMaterialPanel(PanelContext context, plm_vault::Properties properties)
    : Panel(std::move(context)),
      m_properties(std::move(properties)),
      m_name(NameFrom(m_properties)),
      m_group(Text(IDS_GROUP_FASTENERS)) {}

unsigned CreateMaterialPanel::Title() const { return IDS_COMMAND_CREATE_MATERIAL; }

std::vector<Field> CreateMaterialPanel::Fields() const {
  std::vector<Choice> groups;
  for (const unsigned id :
       {IDS_GROUP_FASTENERS, IDS_GROUP_SHEET_METAL, IDS_GROUP_PROFILES, IDS_GROUP_OTHER}) {
    groups.push_back({Text(id), Text(id)});
  }
  return {{L"number", IDS_LABEL_NUMBER, FieldKind::kShown, Vault().PeekNumber(L"M-")},
          {L"name", IDS_LABEL_NAME, FieldKind::kText, m_name},
          {L"group", IDS_LABEL_GROUP, FieldKind::kChoice, m_group, groups}};
}

std::vector<Action> CreateMaterialPanel::Actions() const {
  return {{L"create", IDS_ACTION_CREATE, !m_name.empty()}, {L"nothing", IDS_ACTION_NOTHING}};
}

std::wstring CreateMaterialPanel::Preview(const std::wstring& action) const {
  // The host looks for exactly these two characters.
  return action == L"nothing" ? L"{}" : Answer(Vault().PeekNumber(L"M-"));
}

std::optional<std::wstring> CreateMaterialPanel::OnAction(const std::wstring& action) {
  if (action == L"nothing") return Preview(action);
  return Answer(Vault().CreateMaterial(m_name, m_group, m_properties, Context().user).number);
}

std::wstring CreateMaterialPanel::Answer(const std::wstring& number) const {
  return AnswerJson().Object("data", {{L"number", number}, {L"name", m_name}, {L"group", m_group}}).Done();
}

void CreateMaterialPanel::OnField(const Field& field, const std::wstring& value) {
  (field.name == L"name" ? m_name : m_group) = value;
}

}  // namespace plm_panels
