/// @file The journal of a session as a file.
#pragma once

#include <string>

#include "cad_host/journal.h"

namespace cad_host {

/// Writes the whole journal to the file `path`, in UTF-8; does nothing if `path` is empty.
/// @throws HostError naming the file if it cannot be written.
void WriteJournalFile(const std::wstring& path, const Journal& journal);

}  // namespace cad_host
