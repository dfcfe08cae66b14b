// Number series.
#include "database.h"
#include "vault/vault.h"

namespace plm_vault {
namespace {

std::wstring Format(std::wstring_view series, std::int64_t digits, std::int64_t value) {
  std::wstring number = std::to_wstring(value);
  if (number.size() < static_cast<std::size_t>(digits)) {
    number.insert(0, static_cast<std::size_t>(digits) - number.size(), L'0');
  }
  return std::wstring(series) + number;
}

[[noreturn]] void FailForSeries(std::wstring_view series) {
  throw VaultError(L"there is no number series \"" + std::wstring(series) + L"\"");
}

}  // namespace

std::vector<std::wstring> Vault::Series() const {
  std::vector<std::wstring> series;
  Statement rows = m_database->Prepare("SELECT prefix FROM series ORDER BY prefix");
  while (rows.Next()) series.push_back(rows.Text(0));
  return series;
}

std::wstring Vault::PeekNumber(std::wstring_view series) const {
  Statement row = m_database->Prepare("SELECT digits, next FROM series WHERE prefix = ?");
  if (!row.Bind(series).Next()) FailForSeries(series);
  return Format(series, row.Number(0), row.Number(1));
}

std::wstring Vault::NextNumber(std::wstring_view series) {
  Transaction transaction(*m_database);
  std::wstring number = TakeNumber(series);
  transaction.Commit();
  return number;
}

/// NextNumber as a part of a transaction that is open.
std::wstring Vault::TakeNumber(std::wstring_view series) {
  std::wstring number = PeekNumber(series);
  m_database->Prepare("UPDATE series SET next = next + 1 WHERE prefix = ?").Bind(series).Run();
  return number;
}

}  // namespace plm_vault
