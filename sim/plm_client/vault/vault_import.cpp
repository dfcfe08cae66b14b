// Files that are taken in, and changes.
#include "CStringHelper.h"
#include "database.h"
#include "vault/vault.h"
#include "vault_files.h"

namespace plm_vault {
namespace {

struct KindOfFile {
  const wchar_t* extension;
  ItemKind kind;
  const wchar_t* series;
};

constexpr KindOfFile kKinds[] = {{L".sldprt", ItemKind::kPart, L"P-"},
                                 {L".sldasm", ItemKind::kAssembly, L"A-"},
                                 {L".slddrw", ItemKind::kDrawing, L"D-"}};

const KindOfFile& KindOf(const std::filesystem::path& file) {
  const std::wstring extension = CStringHelper::ToLower(file.extension().wstring());
  for (const KindOfFile& kind : kKinds) {
    if (extension == kind.extension) return kind;
  }
  throw VaultError(file.wstring() + L" is no part, assembly or drawing");
}

}  // namespace

Imported Vault::Import(const std::filesystem::path& file, const std::wstring& user, const std::wstring& name,
                       const std::wstring& comment) {
  KindOf(file);  // before anything is changed
  Transaction transaction(*m_database);
  const std::optional<Item> known = FindByFileName(file.filename().wstring());
  Imported imported = known ? NextRevision(*known, file, user, comment) : NewItem(file, user, name, comment);
  transaction.Commit();
  return imported;
}

Imported Vault::NextRevision(Item item, const std::filesystem::path& file, const std::wstring& user,
                             const std::wstring& comment) {
  RefuseUnlessFree(item, user);
  ++item.revision;
  AddRevision(item, file, user, comment);
  return {Find(item.number), false};
}

Imported Vault::NewItem(const std::filesystem::path& file, const std::wstring& user, const std::wstring& name,
                        const std::wstring& comment) {
  const KindOfFile& kind = KindOf(file);
  const Item item{.number = TakeNumber(kind.series),
                  .name = name.empty() ? file.stem().wstring() : name,
                  .file_name = file.filename().wstring(),
                  .kind = kind.kind};
  m_database->Prepare("INSERT INTO items (number, name, file_name, file_key, kind) VALUES (?, ?, ?, ?, ?)")
      .Bind(item.number)
      .Bind(item.name)
      .Bind(item.file_name)
      .Bind(CStringHelper::ToLower(item.file_name))
      .Bind(static_cast<std::int64_t>(item.kind))
      .Run();
  AddRevision(item, file, user, comment);
  return {Find(item.number), true};
}

/// Stores `file` as the item's revision, which becomes the latest, in work and not checked out.
void Vault::AddRevision(const Item& item, const std::filesystem::path& file, const std::wstring& user,
                        const std::wstring& comment) {
  m_database
      ->Prepare(
          "INSERT INTO revisions (item, revision, author, comment) "
          "VALUES ((SELECT id FROM items WHERE number = ?), ?, ?, ?)")
      .Bind(item.number)
      .Bind(item.revision)
      .Bind(user)
      .Bind(comment)
      .Run();
  m_database
      ->Prepare(
          "UPDATE items SET revision = ?, state = 0, checked_out_by = NULL, checked_out_at = NULL "
          "WHERE number = ?")
      .Bind(item.revision)
      .Bind(item.number)
      .Run();
  CopyWhole(file, FileOf(item, item.revision));
}

std::wstring Vault::CreateChange(const std::wstring& title, const std::vector<std::wstring>& numbers,
                                 const std::wstring& user) {
  Transaction transaction(*m_database);
  std::wstring number = TakeNumber(L"C-");
  m_database->Prepare("INSERT INTO changes (number, title, author) VALUES (?, ?, ?)")
      .Bind(number)
      .Bind(title)
      .Bind(user)
      .Run();
  const std::int64_t change = m_database->LastInserted();
  for (const std::wstring& item : numbers) {
    m_database
        ->Prepare(
            "INSERT INTO change_items (change, item) VALUES (?, (SELECT id FROM items WHERE number = ?))")
        .Bind(change)
        .Bind(item)
        .Run();
  }
  transaction.Commit();
  return number;
}

}  // namespace plm_vault
