#include "database.h"

#include <sqlite3.h>

#include "CStringHelper.h"
#include "vault/vault_error.h"

namespace plm_vault {
namespace {

constexpr int kLockWait = 5000;  // milliseconds

[[noreturn]] void Fail(const std::filesystem::path& file, const std::string& reason) {
  throw VaultError(file.wstring() + L": " + CStringHelper::UTF8ToUnicode(reason));
}

}  // namespace

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }

Statement::Statement(sqlite3* database, const std::filesystem::path& file, std::string_view sql)
    : m_file(file) {
  sqlite3_stmt* statement = nullptr;
  const int result =
      sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
  m_statement.reset(statement);
  if (result != SQLITE_OK) Fail(file, sqlite3_errmsg(database));
}

void Statement::Check(int result) const {
  if (result != SQLITE_OK) Fail(m_file, sqlite3_errmsg(sqlite3_db_handle(m_statement.get())));
}

Statement& Statement::Bind(std::wstring_view text) {
  const std::string utf8 = CStringHelper::UnicodeToUTF8(text);
  Check(sqlite3_bind_text(m_statement.get(), ++m_bound, utf8.data(), static_cast<int>(utf8.size()),
                          SQLITE_TRANSIENT));
  return *this;
}

Statement& Statement::Bind(std::int64_t number) {
  Check(sqlite3_bind_int64(m_statement.get(), ++m_bound, number));
  return *this;
}

bool Statement::Next() {
  const int result = sqlite3_step(m_statement.get());
  if (result == SQLITE_ROW) return true;
  if (result == SQLITE_DONE) return false;
  Fail(m_file, sqlite3_errmsg(sqlite3_db_handle(m_statement.get())));
}

std::wstring Statement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column));
  if (!text) return {};
  return CStringHelper::UTF8ToUnicode(
      {text, static_cast<std::size_t>(sqlite3_column_bytes(m_statement.get(), column))});
}

std::int64_t Statement::Number(int column) const { return sqlite3_column_int64(m_statement.get(), column); }

void Database::Closer::operator()(sqlite3* database) const noexcept { sqlite3_close(database); }

Database::Database(const std::filesystem::path& file, bool make) : m_file(file) {
  sqlite3* database = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | (make ? SQLITE_OPEN_CREATE : 0);
  const int result =
      sqlite3_open_v2(CStringHelper::UnicodeToUTF8(file.wstring()).c_str(), &database, flags, nullptr);
  m_database.reset(database);  // there is one even after a failure
  if (result != SQLITE_OK) Fail(m_file, database ? sqlite3_errmsg(database) : sqlite3_errstr(result));
  sqlite3_busy_timeout(database, kLockWait);
  RunAll("PRAGMA foreign_keys=ON");
}

void Database::RunAll(const std::string& sql) {
  if (sqlite3_exec(m_database.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    Fail(m_file, sqlite3_errmsg(m_database.get()));
  }
}

std::int64_t Database::LastInserted() const { return sqlite3_last_insert_rowid(m_database.get()); }

Transaction::Transaction(Database& database) : m_database(database) { m_database.RunAll("BEGIN IMMEDIATE"); }

Transaction::~Transaction() {
  if (!m_open) return;
  try {
    m_database.RunAll("ROLLBACK");
  } catch (const VaultError&) {  // the failure that ends the transaction is already on its way
  }
}

void Transaction::Commit() {
  m_database.RunAll("COMMIT");
  m_open = false;
}

}  // namespace plm_vault
