/// @file QD_PLMLogin and QD_PLMLogout.
#pragma once

#include "panels/panel.h"

namespace plm_panels {

/// The person says who logs in.
class LogInPanel : public Panel {
 public:
  explicit LogInPanel(PanelContext context);

  unsigned Title() const override;
  std::vector<Field> Fields() const override;
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  void OnField(const Field&, const std::wstring& value) override { m_user = value; }
  std::optional<std::wstring> OnAction(const std::wstring& action) override;

 private:
  std::wstring Answer(const std::wstring& token) const;

  std::wstring m_user;
};

/// The person logs out, or stays. The host that ends waits ten seconds at most, and nobody may be there: the
/// panel logs out by itself before.
class LogOutPanel : public Panel {
 public:
  using Panel::Panel;

  unsigned Title() const override;
  std::vector<Field> Fields() const override;
  std::vector<Column> Columns() const override;
  std::size_t RowCount() const override;
  std::wstring Cell(std::size_t row, std::size_t column) const override;
  std::vector<Action> Actions() const override;
  std::optional<AutomaticAction> Automatic() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  std::optional<std::wstring> OnAction(const std::wstring& action) override;

 private:
  /// What the user still has checked out.
  const std::vector<plm_vault::Item> m_items = Vault().CheckedOutBy(Context().user);
};

}  // namespace plm_panels
