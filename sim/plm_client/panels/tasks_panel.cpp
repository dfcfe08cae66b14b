#include "tasks_panel.h"

#include <algorithm>

#include "item_list_panel.h"
#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {

using plm_vault::Item;
using plm_vault::Task;

TasksPanel::TasksPanel(PanelContext context)
    : Panel(std::move(context)), m_tasks(Vault().Tasks(Context().user)) {}

unsigned TasksPanel::Title() const { return IDS_COMMAND_TASKS; }

std::vector<Column> TasksPanel::Columns() const {
  return {{IDS_LABEL_NUMBER, 56}, {IDS_LABEL_TITLE, 184},     {IDS_LABEL_WORKFLOW, 64},
          {IDS_LABEL_STATE, 60},  {IDS_LABEL_CREATED_BY, 74}, {IDS_LABEL_SINCE, 116}};
}

std::wstring TasksPanel::Cell(std::size_t row, std::size_t column) const {
  const Task& task = m_tasks.at(row);
  switch (column) {
    case 0:
      return task.number;
    case 1:
      return task.title;
    case 2: {
      const std::vector<Choice> workflows = WorkflowChoices(Context().text);
      const auto workflow = std::ranges::find(workflows, task.workflow, &Choice::value);
      return workflow == workflows.end() ? task.workflow : workflow->label;
    }
    case 3:
      return TextOf(Context().text, task.state);
    case 4:
      return task.created_by;
    default:
      return task.created_at;
  }
}

const Task* TasksPanel::Selected() const {
  return Selection().empty() ? nullptr : &m_tasks.at(Selection()[0]);
}

std::vector<Item> TasksPanel::Documents() const {
  std::vector<Item> items;
  if (!Selected()) return items;
  for (const std::wstring& number : Selected()->items) items.push_back(Vault().Find(number));
  return items;
}

plm_vault::Properties TasksPanel::Details() const {
  plm_vault::Properties details;
  for (const Item& item : Documents())
    details.emplace_back(item.number, item.name + L" \u2013 " + item.file_name);
  return details;
}

std::vector<Action> TasksPanel::Actions() const {
  const Task* const task = Selected();
  return {{L"open", IDS_ACTION_OPEN, task && !task->items.empty()},
          {L"complete", IDS_ACTION_COMPLETE, task && task->state == plm_vault::TaskState::kOpen}};
}

std::wstring TasksPanel::Preview(const std::wstring&) const {
  std::vector<std::filesystem::path> paths;
  for (const Item& item : Documents()) paths.push_back(Vault().WorkFile(item));
  return PathsAnswer("OpenFile", paths);
}

std::optional<std::wstring> TasksPanel::OnAction(const std::wstring& action) {
  if (action == L"open") {
    for (const Item& item : Documents()) Vault().HandOut(item, item.revision);
    return Preview(action);
  }
  const std::wstring number = Selected()->number;
  Vault().CompleteTask(number);
  m_tasks = Vault().Tasks(Context().user);
  const auto row = std::ranges::find(m_tasks, number, &Task::number) - m_tasks.begin();
  Select({static_cast<std::size_t>(row)});
  Say(Filled(Text(IDS_SAID_COMPLETED), number));
  return std::nullopt;
}

}  // namespace plm_panels
