/// @file QD_PLMGetcode.
#pragma once

#include "panels/panel.h"

namespace plm_panels {

/// The person takes the next number of a series.
class CodePanel : public Panel {
 public:
  using Panel::Panel;

  unsigned Title() const override;
  std::vector<Field> Fields() const override;
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  void OnField(const Field&, const std::wstring& value) override { m_series = value; }
  std::optional<std::wstring> OnAction(const std::wstring& action) override;

 private:
  std::wstring m_series = L"P-";
  std::vector<std::wstring> m_codes;  // that were taken
};

}  // namespace plm_panels
