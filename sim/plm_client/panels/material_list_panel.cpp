#include "material_list_panel.h"

#include <algorithm>

#include "panels/text_ids.h"

namespace plm_panels {

using plm_vault::Material;

std::vector<Column> MaterialListPanel::Columns() const {
  return {{IDS_LABEL_NUMBER, 70},
          {IDS_LABEL_NAME, 196},
          {IDS_LABEL_GROUP, 90},
          {IDS_LABEL_CREATED_BY, 76},
          {IDS_LABEL_SINCE, 120}};
}

std::wstring MaterialListPanel::Cell(std::size_t row, std::size_t column) const {
  const Material& material = m_materials.at(row);
  const std::wstring cells[] = {material.number, material.name, material.group, material.created_by,
                                material.created_at};
  return cells[column];
}

plm_vault::Properties MaterialListPanel::Details() const {
  return Selection().size() == 1 ? m_materials.at(Selection()[0]).properties : plm_vault::Properties{};
}

void MaterialListPanel::Show(std::vector<Material> materials) {
  const std::vector<std::wstring> selected = NumbersOf(Selected());
  m_materials = std::move(materials);
  Select({});
  if (selected.size() == 1) SelectNumber(selected.front());
}

void MaterialListPanel::SelectNumber(std::wstring_view number) {
  const auto row = std::ranges::find(m_materials, number, &Material::number) - m_materials.begin();
  Select({static_cast<std::size_t>(row)});
}

std::vector<Material> MaterialListPanel::Selected() const {
  std::vector<Material> selected;
  selected.reserve(Selection().size());
  for (const std::size_t row : Selection()) selected.push_back(m_materials.at(row));
  return selected;
}

std::vector<std::wstring> NumbersOf(const std::vector<Material>& materials) {
  std::vector<std::wstring> numbers;
  numbers.reserve(materials.size());
  for (const Material& material : materials) numbers.push_back(material.number);
  return numbers;
}

}  // namespace plm_panels
