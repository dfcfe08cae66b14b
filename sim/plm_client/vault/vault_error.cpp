#include "vault/vault_error.h"

#include "CStringHelper.h"

namespace plm_vault {

VaultError::VaultError(const std::wstring& message)
    : std::runtime_error(CStringHelper::UnicodeToUTF8(message)), m_message(message) {}

}  // namespace plm_vault
