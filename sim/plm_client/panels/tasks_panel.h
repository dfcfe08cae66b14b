/// @file QD_PLMTaskManage.
#pragma once

#include "panels/panel.h"

namespace plm_panels {

/// The user's tasks; the person opens their documents, or completes them.
class TasksPanel : public Panel {
 public:
  explicit TasksPanel(PanelContext context);

  unsigned Title() const override;
  std::vector<Column> Columns() const override;
  std::size_t RowCount() const override { return m_tasks.size(); }
  std::wstring Cell(std::size_t row, std::size_t column) const override;
  bool AllowsSeveralRows() const override { return false; }
  plm_vault::Properties Details() const override;
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  std::optional<std::wstring> OnAction(const std::wstring& action) override;

 private:
  const plm_vault::Task* Selected() const;
  std::vector<plm_vault::Item> Documents() const;

  std::vector<plm_vault::Task> m_tasks;
};

}  // namespace plm_panels
