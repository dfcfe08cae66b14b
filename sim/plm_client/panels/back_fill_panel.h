/// @file QD_PLMMaterialBackFill.
#pragma once

#include "material_list_panel.h"

namespace plm_panels {

/// The person chooses the material that the host's document is filled from.
class BackFillPanel : public MaterialListPanel {
 public:
  /// @param created what the host was told of a material that was just created; it is then selected.
  BackFillPanel(PanelContext context, const plm_vault::Properties& created);

  unsigned Title() const override;
  std::vector<Field> Fields() const override;
  bool AllowsSeveralRows() const override { return false; }
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  void OnField(const Field& field, const std::wstring& value) override;

 private:
  std::wstring m_words;
};

}  // namespace plm_panels
