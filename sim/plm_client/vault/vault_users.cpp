// Users and their log-ins.
#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <array>

#include "database.h"
#include "vault/vault.h"

namespace plm_vault {
namespace {

std::wstring NewToken() {
  GUID guid{};
  std::array<wchar_t, 39> text{};  // with the braces and the end
  if (FAILED(CoCreateGuid(&guid)) || StringFromGUID2(guid, text.data(), static_cast<int>(text.size())) == 0) {
    throw VaultError(L"a token cannot be made");
  }
  return std::wstring(text.data() + 1, text.size() - 3);
}

}  // namespace

void Vault::AddUser(const User& user) {
  m_database->Prepare("INSERT INTO users (name, full_name) VALUES (?, ?)")
      .Bind(user.name)
      .Bind(user.full_name)
      .Run();
}

std::vector<User> Vault::Users() const {
  std::vector<User> users;
  Statement rows = m_database->Prepare("SELECT name, full_name FROM users ORDER BY name");
  while (rows.Next()) users.push_back({rows.Text(0), rows.Text(1)});
  return users;
}

std::wstring Vault::LogIn(const std::wstring& user) {
  Statement known = m_database->Prepare("SELECT 1 FROM users WHERE name = ?");
  if (!known.Bind(user).Next()) throw VaultError(L"there is no user \"" + user + L"\"");
  std::wstring token = NewToken();
  m_database->Prepare("INSERT INTO log_ins (token, user) VALUES (?, ?)").Bind(token).Bind(user).Run();
  return token;
}

std::wstring Vault::UserOfToken(std::wstring_view token) const {
  Statement row = m_database->Prepare("SELECT user FROM log_ins WHERE token = ?");
  return row.Bind(token).Next() ? row.Text(0) : std::wstring();
}

void Vault::LogOut(const std::wstring& user) {
  m_database->Prepare("DELETE FROM log_ins WHERE user = ?").Bind(user).Run();
}

}  // namespace plm_vault
