// Materials.
#include "database.h"
#include "search_words.h"
#include "vault/vault.h"

namespace plm_vault {
namespace {

const std::string kMaterialColumns =
    "SELECT id, number, name, \"group\", is_temporary, created_by, created_at FROM materials ";

Properties PropertiesOf(Database& database, std::int64_t material) {
  Properties properties;
  Statement rows =
      database.Prepare("SELECT name, value FROM material_properties WHERE material = ? ORDER BY position");
  rows.Bind(material);
  while (rows.Next()) properties.emplace_back(rows.Text(0), rows.Text(1));
  return properties;
}

void AddProperties(Database& database, std::int64_t material, const Properties& properties) {
  std::int64_t position = 0;
  for (const auto& [name, value] : properties) {
    database.Prepare("INSERT INTO material_properties (material, position, name, value) VALUES (?, ?, ?, ?)")
        .Bind(material)
        .Bind(++position)
        .Bind(name)
        .Bind(value)
        .Run();
  }
}

}  // namespace

std::vector<Material> Vault::ReadMaterials(Statement rows) const {
  std::vector<Material> materials;
  while (rows.Next()) {
    materials.push_back({.number = rows.Text(1),
                         .name = rows.Text(2),
                         .group = rows.Text(3),
                         .is_temporary = rows.Number(4) != 0,
                         .created_by = rows.Text(5),
                         .created_at = rows.Text(6),
                         .properties = PropertiesOf(*m_database, rows.Number(0))});
  }
  return materials;
}

Material Vault::CreateMaterial(const std::wstring& name, const std::wstring& group,
                               const Properties& properties, const std::wstring& user) {
  Transaction transaction(*m_database);
  const std::wstring number = TakeNumber(L"M-");
  m_database->Prepare("INSERT INTO materials (number, name, \"group\", created_by) VALUES (?, ?, ?, ?)")
      .Bind(number)
      .Bind(name)
      .Bind(group)
      .Bind(user)
      .Run();
  AddProperties(*m_database, m_database->LastInserted(), properties);
  Statement rows = m_database->Prepare(kMaterialColumns + "WHERE number = ?");
  rows.Bind(number);
  Material material = ReadMaterials(std::move(rows)).at(0);
  transaction.Commit();
  return material;
}

std::vector<Material> Vault::FindMaterials(std::wstring_view words) const {
  const std::vector<std::wstring> patterns = SearchPatterns(words);
  const std::string condition =
      SearchCondition("number || char(10) || name || char(10) || \"group\"", patterns.size());
  Statement rows = m_database->Prepare(kMaterialColumns + "WHERE " + condition + " ORDER BY number");
  for (const std::wstring& pattern : patterns) rows.Bind(pattern);
  return ReadMaterials(std::move(rows));
}

std::vector<Material> Vault::TemporaryMaterials(std::wstring_view user) const {
  Statement rows =
      m_database->Prepare(kMaterialColumns + "WHERE is_temporary AND created_by = ? ORDER BY number");
  rows.Bind(user);
  return ReadMaterials(std::move(rows));
}

void Vault::KeepMaterial(std::wstring_view number) {
  m_database->Prepare("UPDATE materials SET is_temporary = 0 WHERE number = ?").Bind(number).Run();
}

}  // namespace plm_vault
