/// @file The custom properties of a model file.
#pragma once

#include <filesystem>

#include "vault/records.h"

namespace plm_models {

/// The document's custom properties, as they were typed. @throws plm_vault::VaultError naming the file if it
/// cannot be read.
plm_vault::Properties ReadModelProperties(const std::filesystem::path& file);

}  // namespace plm_models
