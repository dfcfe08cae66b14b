/// @file QD_PLMStartWF.
#pragma once

#include "item_list_panel.h"

namespace plm_panels {

/// The person chooses documents and starts a workflow with them, which makes a task.
class StartWorkflowPanel : public ItemListPanel {
 public:
  explicit StartWorkflowPanel(PanelContext context);

  unsigned Title() const override;
  std::vector<Field> Fields() const override;
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  void OnField(const Field& field, const std::wstring& value) override;
  std::optional<std::wstring> OnAction(const std::wstring& action) override;

 private:
  std::wstring Answer(const std::wstring& number) const;

  std::wstring m_words;
  std::wstring m_workflow = L"release";
  std::wstring m_title;
  std::wstring m_assignee;
};

}  // namespace plm_panels
