/// @file QD_PLMCreateMaterial.
#pragma once

#include "panels/panel.h"

namespace plm_panels {

/// The person creates a material, which gets a number and the properties of the host's document.
class CreateMaterialPanel : public Panel {
 public:
  CreateMaterialPanel(PanelContext context, plm_vault::Properties properties);

  unsigned Title() const override;
  std::vector<Field> Fields() const override;
  plm_vault::Properties Details() const override { return m_properties; }
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  void OnField(const Field& field, const std::wstring& value) override;
  std::optional<std::wstring> OnAction(const std::wstring& action) override;

 private:
  std::wstring Answer(const std::wstring& number) const;

  plm_vault::Properties m_properties;
  std::wstring m_name;
  std::wstring m_group;
};

}  // namespace plm_panels
