// Items and their revisions.
#include "CStringHelper.h"
#include "database.h"
#include "search_words.h"
#include "vault/vault.h"

namespace plm_vault {
namespace {

const std::string kItemColumns =
    "SELECT number, name, file_name, kind, state, revision, checked_out_by, checked_out_at FROM items ";

}  // namespace

Item Vault::ReadItem(const Statement& row) {
  return {.number = row.Text(0),
          .name = row.Text(1),
          .file_name = row.Text(2),
          .kind = static_cast<ItemKind>(row.Number(3)),
          .state = static_cast<ItemState>(row.Number(4)),
          .revision = static_cast<int>(row.Number(5)),
          .checked_out_by = row.Text(6),
          .checked_out_at = row.Text(7)};
}

std::vector<Item> Vault::ReadItems(Statement rows) const {
  std::vector<Item> items;
  while (rows.Next()) items.push_back(ReadItem(rows));
  return items;
}

std::vector<Item> Vault::Search(std::wstring_view words) const {
  const std::vector<std::wstring> patterns = SearchPatterns(words);
  const std::string condition =
      SearchCondition("number || char(10) || name || char(10) || file_name", patterns.size());
  Statement rows = m_database->Prepare(kItemColumns + "WHERE " + condition + " ORDER BY number");
  for (const std::wstring& pattern : patterns) rows.Bind(pattern);
  return ReadItems(std::move(rows));
}

Item Vault::Find(std::wstring_view number) const {
  Statement row = m_database->Prepare(kItemColumns + "WHERE number = ?");
  if (!row.Bind(number).Next()) throw VaultError(L"there is no item " + std::wstring(number));
  return ReadItem(row);
}

std::optional<Item> Vault::FindByFileName(std::wstring_view file_name) const {
  Statement row = m_database->Prepare(kItemColumns + "WHERE file_key = ?");
  if (!row.Bind(CStringHelper::ToLower(file_name)).Next()) return std::nullopt;
  return ReadItem(row);
}

std::vector<Revision> Vault::Revisions(std::wstring_view number) const {
  Statement rows = m_database->Prepare(
      "SELECT r.revision, author, at, comment FROM revisions r JOIN items ON items.id = item "
      "WHERE number = ? ORDER BY r.revision DESC");
  rows.Bind(number);
  std::vector<Revision> revisions;
  while (rows.Next()) {
    revisions.push_back({static_cast<int>(rows.Number(0)), rows.Text(1), rows.Text(2), rows.Text(3)});
  }
  return revisions;
}

std::filesystem::path Vault::FileOf(const Item& item, int revision) const {
  return m_folder / L"files" / item.number / RevisionLabel(revision) / item.file_name;
}

void Vault::SetState(std::wstring_view number, ItemState state) {
  m_database->Prepare("UPDATE items SET state = ? WHERE number = ?")
      .Bind(static_cast<std::int64_t>(state))
      .Bind(number)
      .Run();
}

void Vault::AddUse(std::wstring_view user_number, std::wstring_view used_number) {
  m_database
      ->Prepare(
          "INSERT OR IGNORE INTO uses (item, used) VALUES ((SELECT id FROM items WHERE number = ?), "
          "(SELECT id FROM items WHERE number = ?))")
      .Bind(user_number)
      .Bind(used_number)
      .Run();
}

/// What the item refers to, directly or through others.
std::vector<Item> Vault::UsedBy(std::wstring_view number) const {
  Statement rows = m_database->Prepare(
      "WITH RECURSIVE needed(id) AS (SELECT used FROM uses JOIN items ON items.id = item WHERE number = ? "
      "UNION SELECT used FROM uses JOIN needed ON uses.item = needed.id) " +
      kItemColumns + "WHERE id IN (SELECT id FROM needed)");
  rows.Bind(number);
  return ReadItems(std::move(rows));
}

}  // namespace plm_vault
