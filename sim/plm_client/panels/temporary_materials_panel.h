/// @file QD_PLMMyTempMaterial.
#pragma once

#include "material_list_panel.h"

namespace plm_panels {

/// The temporary materials of the user; the person keeps some of them.
class TemporaryMaterialsPanel : public MaterialListPanel {
 public:
  explicit TemporaryMaterialsPanel(PanelContext context);

  unsigned Title() const override;
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  std::optional<std::wstring> OnAction(const std::wstring& action) override;
};

}  // namespace plm_panels
