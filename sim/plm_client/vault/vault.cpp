#include "vault/vault.h"

#include "database.h"
#include "schema.h"
#include "vault_files.h"

namespace plm_vault {
namespace {

constexpr const wchar_t* kDatabaseName = L"vault.db";

}  // namespace

Vault::Vault(std::filesystem::path folder, bool make)
    : m_folder(std::filesystem::absolute(folder)),
      m_database(std::make_unique<Database>(m_folder / kDatabaseName, make)) {}

Vault::Vault(Vault&&) noexcept = default;
Vault& Vault::operator=(Vault&&) noexcept = default;
Vault::~Vault() = default;

Vault Vault::Create(const std::filesystem::path& folder) {
  if (FileExists(folder / kDatabaseName)) {
    throw VaultError((folder / kDatabaseName).wstring() + L" is there already");
  }
  MakeFolders(folder);
  Vault vault(folder, true);
  Transaction transaction(*vault.m_database);
  vault.m_database->RunAll(kSchema);
  transaction.Commit();
  return vault;
}

Vault Vault::Open(const std::filesystem::path& folder) {
  if (!FileExists(folder / kDatabaseName)) {
    throw VaultError(folder.wstring() + L" is no vault: it has no " + kDatabaseName);
  }
  Vault vault(folder, false);
  Statement version = vault.m_database->Prepare("PRAGMA user_version");
  version.Next();
  if (version.Number(0) != kSchemaVersion) {
    throw VaultError((vault.m_folder / kDatabaseName).wstring() + L" is of version " +
                     std::to_wstring(version.Number(0)) + L"; this program knows version " +
                     std::to_wstring(kSchemaVersion));
  }
  return vault;
}

}  // namespace plm_vault
