/// @file The base of panels that show a list of materials.
#pragma once

#include "panels/panel.h"

namespace plm_panels {

/// A list of materials, and the properties of the one that is selected.
class MaterialListPanel : public Panel {
 public:
  using Panel::Panel;

  std::vector<Column> Columns() const override;
  std::size_t RowCount() const override { return m_materials.size(); }
  std::wstring Cell(std::size_t row, std::size_t column) const override;
  plm_vault::Properties Details() const override;

 protected:
  void Show(std::vector<plm_vault::Material> materials);
  /// Selects the material with this number, if it is there.
  void SelectNumber(std::wstring_view number);
  std::vector<plm_vault::Material> Selected() const;

 private:
  std::vector<plm_vault::Material> m_materials;
};

/// The numbers of the materials.
std::vector<std::wstring> NumbersOf(const std::vector<plm_vault::Material>& materials);

}  // namespace plm_panels
