// Tasks of workflows.
#include "database.h"
#include "vault/vault.h"

namespace plm_vault {
namespace {

const std::string kTaskColumns =
    "SELECT id, number, title, workflow, state, assignee, created_by, created_at FROM tasks ";

Task ReadTask(const Statement& row) {
  return {.number = row.Text(1),
          .title = row.Text(2),
          .workflow = row.Text(3),
          .state = static_cast<TaskState>(row.Number(4)),
          .assignee = row.Text(5),
          .created_by = row.Text(6),
          .created_at = row.Text(7)};
}

}  // namespace

std::vector<std::wstring> Vault::TaskItems(std::int64_t task) const {
  Statement rows = m_database->Prepare(
      "SELECT number FROM items JOIN task_items ON item = items.id WHERE task = ? ORDER BY number");
  rows.Bind(task);
  std::vector<std::wstring> numbers;
  while (rows.Next()) numbers.push_back(rows.Text(0));
  return numbers;
}

Task Vault::StartWorkflow(const std::wstring& workflow, const std::wstring& title,
                          const std::wstring& assignee, const std::vector<std::wstring>& numbers,
                          const std::wstring& user) {
  Transaction transaction(*m_database);
  const std::wstring number = TakeNumber(L"T-");
  m_database
      ->Prepare("INSERT INTO tasks (number, title, workflow, assignee, created_by) VALUES (?, ?, ?, ?, ?)")
      .Bind(number)
      .Bind(title)
      .Bind(workflow)
      .Bind(assignee)
      .Bind(user)
      .Run();
  const std::int64_t id = m_database->LastInserted();
  for (const std::wstring& item : numbers) {
    m_database
        ->Prepare("INSERT INTO task_items (task, item) VALUES (?, (SELECT id FROM items WHERE number = ?))")
        .Bind(id)
        .Bind(item)
        .Run();
    if (workflow != L"change") SetState(item, ItemState::kInReview);
  }
  Statement row = m_database->Prepare(kTaskColumns + "WHERE id = ?");
  row.Bind(id).Next();
  Task task = ReadTask(row);
  task.items = TaskItems(id);
  transaction.Commit();
  return task;
}

std::vector<Task> Vault::Tasks(std::wstring_view assignee) const {
  Statement rows = m_database->Prepare(kTaskColumns + "WHERE assignee = ? ORDER BY state, number");
  rows.Bind(assignee);
  std::vector<Task> tasks;
  while (rows.Next()) {
    tasks.push_back(ReadTask(rows));
    tasks.back().items = TaskItems(rows.Number(0));
  }
  return tasks;
}

void Vault::CompleteTask(std::wstring_view number) {
  Transaction transaction(*m_database);
  Statement row = m_database->Prepare("SELECT id, workflow FROM tasks WHERE number = ?");
  if (!row.Bind(number).Next()) throw VaultError(L"there is no task " + std::wstring(number));
  m_database->Prepare("UPDATE tasks SET state = 1 WHERE number = ?").Bind(number).Run();
  if (row.Text(1) == L"release") {
    for (const std::wstring& item : TaskItems(row.Number(0))) SetState(item, ItemState::kReleased);
  }
  transaction.Commit();
}

}  // namespace plm_vault
