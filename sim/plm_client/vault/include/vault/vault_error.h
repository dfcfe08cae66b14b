/// @file The failure of an operation of the vault.
#pragma once

#include <stdexcept>
#include <string>

namespace plm_vault {

/// Names the file, number or name that an operation failed for, and the reason.
class VaultError : public std::runtime_error {
 public:
  explicit VaultError(const std::wstring& message);

  const std::wstring& Message() const { return m_message; }

 private:
  std::wstring m_message;
};

}  // namespace plm_vault
