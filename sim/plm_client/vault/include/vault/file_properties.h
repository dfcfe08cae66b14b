/// @file The custom properties of a model file, read as any program of the system can.
#pragma once

#include <filesystem>

#include "vault/records.h"

namespace plm_vault {

/// The user-defined properties of a compound file, as texts; numbers and dates in the user's own format. None if
/// the file has no such properties. @throws VaultError naming the file if it cannot be read.
Properties ReadFileProperties(const std::filesystem::path& file);

}  // namespace plm_vault
