/// @file The archive for support.
#pragma once

#include <string>

#include "add_in_library.h"
#include "report.h"
#include "zip_archive.h"

namespace doctor {

/// Writes the zip archive `path`: the findings as text and JSON, the configuration files of all places, the
/// log files, and contents.txt, which says where each file comes from and what was left out. Login data is
/// taken out of all of them.
/// @throws BundleError.
void WriteBundle(const std::wstring& path, const Report& report, const AddInLibrary& library);

}  // namespace doctor
