#include "start_workflow_panel.h"

#include "answer_json.h"
#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {

StartWorkflowPanel::StartWorkflowPanel(PanelContext context)
    : ItemListPanel(std::move(context)), m_assignee(Context().user) {
  Show(Vault().Search({}));
}

unsigned StartWorkflowPanel::Title() const { return IDS_COMMAND_START_WORKFLOW; }

std::vector<Field> StartWorkflowPanel::Fields() const {
  return {{L"workflow", IDS_LABEL_WORKFLOW, FieldKind::kChoice, m_workflow, WorkflowChoices(Context().text)},
          {L"title", IDS_LABEL_TITLE, FieldKind::kText, m_title},
          {L"assignee", IDS_LABEL_ASSIGNEE, FieldKind::kChoice, m_assignee, UserChoices(Vault())},
          {L"search", IDS_LABEL_SEARCH, FieldKind::kText, m_words}};
}

std::vector<Action> StartWorkflowPanel::Actions() const {
  return {{L"start", IDS_ACTION_START, !Selection().empty()}};
}

std::wstring StartWorkflowPanel::Preview(const std::wstring&) const {
  return Answer(Vault().PeekNumber(L"T-"));
}

std::optional<std::wstring> StartWorkflowPanel::OnAction(const std::wstring&) {
  const std::wstring title = m_title.empty() ? Joined(SelectedNumbers()) : m_title;
  return Answer(
      Vault().StartWorkflow(m_workflow, title, m_assignee, SelectedNumbers(), Context().user).number);
}

std::wstring StartWorkflowPanel::Answer(const std::wstring& number) const {
  return AnswerJson().Text("task", number).Texts("items", SelectedNumbers()).Done();
}

void StartWorkflowPanel::OnField(const Field& field, const std::wstring& value) {
  if (field.name == L"workflow") {
    m_workflow = value;
  } else if (field.name == L"title") {
    m_title = value;
  } else if (field.name == L"assignee") {
    m_assignee = value;
  } else {
    m_words = value;
    Show(Vault().Search(m_words));
  }
}

}  // namespace plm_panels
