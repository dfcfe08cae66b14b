/// @file Places of files, in words.
#pragma once

#include <string>
#include <vector>

namespace doctor {

/// "Looked at: A (missing), B (used), C (not needed)."
/// @param used  the one of `places` that is used; empty if none is.
std::wstring LookedAt(const std::vector<std::wstring>& places, const std::wstring& used);

}  // namespace doctor
