/// @file One SQLite database: statements with values, and transactions.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace plm_vault {

/// A statement that runs: values go in with Bind, rows come out with Next.
class Statement {
 public:
  Statement(sqlite3* database, const std::filesystem::path& file, std::string_view sql);

  /// Sets the next parameter of the statement. @throws VaultError.
  Statement& Bind(std::wstring_view text);
  Statement& Bind(std::int64_t number);

  /// The next row, if there is one. @throws VaultError naming the file and SQLite's reason.
  bool Next();

  /// Runs a statement that has no rows. @throws VaultError like Next.
  void Run() { Next(); }

  /// A value of the row; the columns count from 0.
  std::wstring Text(int column) const;
  std::int64_t Number(int column) const;

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const noexcept;
  };

  void Check(int result) const;

  const std::filesystem::path& m_file;
  std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
  int m_bound = 0;
};

/// An open database file. Several processes may have it open at the same time: who finds it locked waits.
class Database {
 public:
  /// Opens the file, or makes it if `make` says so. @throws VaultError naming the file and the reason.
  Database(const std::filesystem::path& file, bool make);

  /// Prepares a statement. @throws VaultError.
  Statement Prepare(std::string_view sql) { return {m_database.get(), m_file, sql}; }

  /// Runs statements without values, separated by semicolons. @throws VaultError.
  void RunAll(const std::string& sql);

  /// The id of the row that was inserted last.
  std::int64_t LastInserted() const;

 private:
  struct Closer {
    void operator()(sqlite3* database) const noexcept;
  };

  std::filesystem::path m_file;
  std::unique_ptr<sqlite3, Closer> m_database;
};

/// All changes from here to Commit, or none of them. It takes the lock for writing at once, so that what is
/// read in it stays true until its end.
class Transaction {
 public:
  explicit Transaction(Database& database);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  void Commit();

 private:
  Database& m_database;
  bool m_open = true;
};

}  // namespace plm_vault
