#include "import_panel.h"

#include "answer_json.h"
#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {

ImportPanel::ImportPanel(PanelContext context, Kind kind, std::filesystem::path file)
    : Panel(std::move(context)),
      m_kind(kind),
      m_file(std::move(file)),
      m_known(Vault().FindByFileName(m_file.filename().wstring())),
      m_name(m_known ? m_known->name : m_file.stem().wstring()) {}

unsigned ImportPanel::Title() const {
  return m_kind == Kind::kImport ? IDS_COMMAND_IMPORT : IDS_COMMAND_CHANGE_ITEMS;
}

std::vector<Field> ImportPanel::Fields() const {
  const unsigned comment = m_kind == Kind::kImport ? IDS_LABEL_COMMENT : IDS_LABEL_TITLE;
  return {{L"file", IDS_LABEL_FILE, FieldKind::kShown, m_file.wstring()},
          {L"becomes", IDS_LABEL_BECOMES, FieldKind::kShown, WhatItBecomes()},
          {L"name", IDS_LABEL_NAME, m_known ? FieldKind::kShown : FieldKind::kText, m_name},
          {L"comment", comment, FieldKind::kText, m_comment}};
}

std::wstring ImportPanel::WhatItBecomes() const {
  if (!m_known) return Text(IDS_NEW_ITEM);
  return Filled(Text(IDS_NEXT_REVISION),
                m_known->number + L" " + plm_vault::RevisionLabel(m_known->revision + 1));
}

plm_vault::Properties ImportPanel::Details() const {
  return m_file.empty() ? plm_vault::Properties{} : PropertiesOf(m_file);
}

std::vector<Action> ImportPanel::Actions() const { return {{L"import", IDS_ACTION_IMPORT, !m_file.empty()}}; }

std::wstring ImportPanel::Preview(const std::wstring&) const {
  return AnswerJson().Flag("__InvokeResult__", true).Done();
}

std::optional<std::wstring> ImportPanel::OnAction(const std::wstring&) {
  const plm_vault::Imported imported = Vault().Import(m_file, Context().user, m_name, m_comment);
  AnswerJson answer;
  answer.Flag("__InvokeResult__", true)
      .Text("number", imported.item.number)
      .Text("revision", plm_vault::RevisionLabel(imported.item.revision));
  if (m_kind == Kind::kChange) {
    const std::wstring title = m_comment.empty() ? imported.item.name : m_comment;
    answer.Text("change", Vault().CreateChange(title, {imported.item.number}, Context().user));
  }
  return answer.Done();
}

void ImportPanel::OnField(const Field& field, const std::wstring& value) {
  (field.name == L"name" ? m_name : m_comment) = value;
}

}  // namespace plm_panels
