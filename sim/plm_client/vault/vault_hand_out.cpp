// Files that are handed out, and check-out marks.
#include "database.h"
#include "vault/vault.h"
#include "vault_files.h"

namespace plm_vault {
namespace {

constexpr const wchar_t* kWorkFolder = L"work";

/// The file of a revision that the vault has.
void CopyUnlessSame(const std::filesystem::path& from, const std::filesystem::path& to) {
  // A file that the CAD application has open cannot be replaced; the same bytes need not be.
  if (!SameBytes(from, to)) CopyWhole(from, to);
}

}  // namespace

std::filesystem::path Vault::WorkFile(const Item& item) const {
  return m_folder / kWorkFolder / item.file_name;
}

std::filesystem::path Vault::CoveringFile(const Item& item, int revision) const {
  return m_folder / kWorkFolder / RevisionLabel(revision) / item.file_name;
}

std::filesystem::path Vault::HandOut(const Item& item, int revision) {
  for (const Item& used : UsedBy(item.number)) {
    if (!FileExists(WorkFile(used))) CopyWhole(FileOf(used, used.revision), WorkFile(used));
  }
  const bool keeps_changes = !item.checked_out_by.empty() && FileExists(WorkFile(item));
  if (!keeps_changes) CopyUnlessSame(FileOf(item, revision), WorkFile(item));
  return WorkFile(item);
}

std::filesystem::path Vault::HandOutForCovering(const Item& item, int revision) {
  CopyUnlessSame(FileOf(item, revision), CoveringFile(item, revision));
  return CoveringFile(item, revision);
}

void Vault::RefuseUnlessFree(const Item& item, const std::wstring& user) const {
  if (item.checked_out_by.empty() || item.checked_out_by == user) return;
  throw VaultError(item.number + L" (" + item.file_name + L") is checked out by " + item.checked_out_by);
}

std::filesystem::path Vault::CheckOut(std::wstring_view number, const std::wstring& user) {
  Transaction transaction(*m_database);
  const Item item = Find(number);
  RefuseUnlessFree(item, user);
  std::filesystem::path file = HandOut(item, item.revision);
  m_database
      ->Prepare(
          "UPDATE items SET checked_out_by = ?, "
          "checked_out_at = strftime('%Y-%m-%d %H:%M', 'now', 'localtime') WHERE number = ?")
      .Bind(user)
      .Bind(number)
      .Run();
  transaction.Commit();
  return file;
}

void Vault::UndoCheckOut(std::wstring_view number, const std::wstring& user) {
  Transaction transaction(*m_database);
  RefuseUnlessFree(Find(number), user);
  m_database->Prepare("UPDATE items SET checked_out_by = NULL, checked_out_at = NULL WHERE number = ?")
      .Bind(number)
      .Run();
  transaction.Commit();
}

std::vector<Item> Vault::CheckedOutBy(std::wstring_view user) const {
  std::vector<Item> items;
  for (Item& item : Search({})) {
    if (item.checked_out_by == user) items.push_back(std::move(item));
  }
  return items;
}

}  // namespace plm_vault
