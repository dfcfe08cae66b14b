/// @file QD_PLMDataSelector and QD_PLMQuery.
#pragma once

#include "item_list_panel.h"

namespace plm_panels {

/// The person looks for items and says what the host does with their files.
class SelectorPanel : public ItemListPanel {
 public:
  /// @param title of the command, which is one of two that differ in nothing else.
  SelectorPanel(PanelContext context, unsigned title);

  unsigned Title() const override { return m_title; }
  std::vector<Field> Fields() const override;
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  void OnField(const Field& field, const std::wstring& value) override;
  void OnSelect() override;
  std::optional<std::wstring> OnAction(const std::wstring& action) override;

 private:
  void Find();
  int RevisionOf(const plm_vault::Item& item) const;
  std::vector<Choice> RevisionChoices() const;
  void CheckOutSelected();
  void UndoCheckOutOfSelected();

  unsigned m_title;
  std::wstring m_words;
  std::wstring m_kind;
  std::wstring m_revision;  // a label; empty: the latest
};

}  // namespace plm_panels
