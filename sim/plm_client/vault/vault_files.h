/// @file Files and folders of a vault. Failures are VaultErrors that name the file and the system's reason.
#pragma once

#include <filesystem>

namespace plm_vault {

bool FileExists(const std::filesystem::path& file);

/// Makes the folder and its parents.
void MakeFolders(const std::filesystem::path& folder);

/// Copies `from` to `to`, whose folder is made. An existing file is replaced when the copy is whole.
void CopyWhole(const std::filesystem::path& from, const std::filesystem::path& to);

/// Whether both are there and have the same bytes.
bool SameBytes(const std::filesystem::path& a, const std::filesystem::path& b);

}  // namespace plm_vault
