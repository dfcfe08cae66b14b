/// @file A vault with believable content.
#pragma once

#include <filesystem>

#include "vault/vault.h"

namespace plm_models {

/// Makes a vault in `folder`, which must not hold one, with some users, about thirty items with real model
/// files and several revisions of some, materials and tasks.
/// @throws plm_vault::VaultError or cad_host::HostError naming the file that cannot be made.
plm_vault::Vault MakeSampleVault(const std::filesystem::path& folder);

}  // namespace plm_models
