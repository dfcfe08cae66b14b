/// @file A small PLM vault: a folder with a database and the files of every revision.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vault/records.h"
#include "vault/vault_error.h"

namespace plm_vault {

class Database;
class Statement;

/// A vault in a folder:
///
///     vault.db                       items, revisions, users, materials, tasks
///     files\P-00012\A\bolt.sldprt    the file of each revision
///     work\bolt.sldprt               files that were handed out
///     work\B\bolt.sldprt             files that were handed out for covering those
///
/// Each operation is done as a whole or not at all. Every operation throws VaultError, which names the file,
/// number or name and the reason. Several processes may open a vault at the same time; one object is for one
/// thread.
class Vault {
 public:
  /// Makes an empty vault in `folder`, which must not hold one.
  static Vault Create(const std::filesystem::path& folder);

  /// Opens the vault in `folder`.
  static Vault Open(const std::filesystem::path& folder);

  Vault(Vault&&) noexcept;
  Vault& operator=(Vault&&) noexcept;
  ~Vault();

  const std::filesystem::path& Folder() const { return m_folder; }

  // Users and their log-ins.

  void AddUser(const User& user);
  std::vector<User> Users() const;
  /// Notes that `user` is logged in. @return a token that nobody can guess.
  std::wstring LogIn(const std::wstring& user);
  /// The user whom LogIn gave `token`; empty if there is none or the user has logged out.
  std::wstring UserOfToken(std::wstring_view token) const;
  /// Ends every log-in of `user`.
  void LogOut(const std::wstring& user);

  // Items.

  /// The items whose number, name or file name contains every word of `words`, in the order of their numbers.
  std::vector<Item> Search(std::wstring_view words) const;
  /// The item with this number. It must exist.
  Item Find(std::wstring_view number) const;
  /// The item whose file has this name, without regard to case.
  std::optional<Item> FindByFileName(std::wstring_view file_name) const;
  /// The item's revisions, the latest first.
  std::vector<Revision> Revisions(std::wstring_view number) const;
  /// The file of a revision in the vault: for reading only.
  std::filesystem::path FileOf(const Item& item, int revision) const;
  void SetState(std::wstring_view number, ItemState state);

  /// Notes that the assembly or drawing `user_number` refers to the file of `used_number`.
  void AddUse(std::wstring_view user_number, std::wstring_view used_number);

  // Files that are handed out.

  /// Where HandOut puts an item's file.
  std::filesystem::path WorkFile(const Item& item) const;
  /// Where HandOutForCovering puts the file of a revision.
  std::filesystem::path CoveringFile(const Item& item, int revision) const;
  /// Copies a revision, and the latest of what it refers to, to the working folder. A file that its user has
  /// checked out is not touched: it may have changes. @return WorkFile(item).
  std::filesystem::path HandOut(const Item& item, int revision);
  /// Copies a revision to a folder of its own, from which it can cover the item's file.
  /// @return CoveringFile(item, revision).
  std::filesystem::path HandOutForCovering(const Item& item, int revision);

  // Changes to items.

  /// Marks the item as checked out and hands its file out. Fails if another user has it. @return the file.
  std::filesystem::path CheckOut(std::wstring_view number, const std::wstring& user);
  /// Takes the mark away. Fails if another user has it.
  void UndoCheckOut(std::wstring_view number, const std::wstring& user);
  /// The items that `user` has checked out.
  std::vector<Item> CheckedOutBy(std::wstring_view user) const;
  /// Takes a file in: as the next revision of the item that has its file name, whose check-out mark then
  /// goes, or as a new item with the next number of its kind. An empty `name` becomes the file's name without
  /// its extension. Fails if another user has the item checked out.
  Imported Import(const std::filesystem::path& file, const std::wstring& user, const std::wstring& name,
                  const std::wstring& comment);
  /// A list of items that a change is about. @return its number, such as "C-0001".
  std::wstring CreateChange(const std::wstring& title, const std::vector<std::wstring>& numbers,
                            const std::wstring& user);

  // Number series.

  /// The prefixes of the series: "A-", "C-", "D-", "M-", "P-", "T-".
  std::vector<std::wstring> Series() const;
  /// The number that NextNumber will give if nobody takes it before.
  std::wstring PeekNumber(std::wstring_view series) const;
  /// Takes the next number of a series; it is never given again.
  std::wstring NextNumber(std::wstring_view series);

  // Materials.

  /// Stores a temporary material of `user` with the next number of its series.
  Material CreateMaterial(const std::wstring& name, const std::wstring& group, const Properties& properties,
                          const std::wstring& user);
  /// The materials whose number, name or group contains every word of `words`.
  std::vector<Material> FindMaterials(std::wstring_view words) const;
  /// The temporary materials of `user`.
  std::vector<Material> TemporaryMaterials(std::wstring_view user) const;
  /// Makes a temporary material a lasting one.
  void KeepMaterial(std::wstring_view number);

  // Workflows.

  /// Makes a task about the items. A "release" or "review" puts them in review.
  Task StartWorkflow(const std::wstring& workflow, const std::wstring& title, const std::wstring& assignee,
                     const std::vector<std::wstring>& numbers, const std::wstring& user);
  /// The tasks of `assignee`, the open ones first.
  std::vector<Task> Tasks(std::wstring_view assignee) const;
  /// Ends a task. That of a "release" releases its items.
  void CompleteTask(std::wstring_view number);

 private:
  Vault(std::filesystem::path folder, bool make);

  static Item ReadItem(const Statement& row);
  std::vector<Item> ReadItems(Statement rows) const;
  std::vector<Material> ReadMaterials(Statement rows) const;
  std::vector<Item> UsedBy(std::wstring_view number) const;
  std::vector<std::wstring> TaskItems(std::int64_t task) const;
  void RefuseUnlessFree(const Item& item, const std::wstring& user) const;
  Imported NextRevision(Item item, const std::filesystem::path& file, const std::wstring& user,
                        const std::wstring& comment);
  Imported NewItem(const std::filesystem::path& file, const std::wstring& user, const std::wstring& name,
                   const std::wstring& comment);
  void AddRevision(const Item& item, const std::filesystem::path& file, const std::wstring& user,
                   const std::wstring& comment);
  std::wstring TakeNumber(std::wstring_view series);

  std::filesystem::path m_folder;
  std::unique_ptr<Database> m_database;
};

}  // namespace plm_vault
