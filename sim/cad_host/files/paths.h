/// @file Paths as the host compares and shows them.
#pragma once

#include <string>

namespace cad_host {

/// Whether two names or absolute paths are equal, without regard to case.
bool SameName(const std::wstring& a, const std::wstring& b);

/// "bolt.sldprt" for `C:\bolt.sldprt`.
std::wstring FileNameOf(const std::wstring& path);

/// "bolt" for `C:\bolt.sldprt`.
std::wstring BaseNameOf(const std::wstring& path);

}  // namespace cad_host
