/// @file What Wine loses in the directory of a compound file.
#pragma once

#include <string>

namespace cad_host {

/// Gives the storages and streams of the file `changed`, of which `source` is an earlier state, the state
/// bits and times that they have in `source`: Wine clears these in every entry that it writes anew.
/// @throws HostError naming `shown` if a file is damaged or `changed` cannot be written.
void KeepStateBitsAndTimes(const std::wstring& source, const std::wstring& changed,
                           const std::wstring& shown);

}  // namespace cad_host
