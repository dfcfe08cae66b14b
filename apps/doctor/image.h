/// @file What the file of a program or DLL says of itself.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace doctor {

/// A function that is imported: by its name, or by its number if the name is empty.
struct ImportedFunction {
  std::string name;
  std::uint16_t ordinal;
};

/// A DLL that is needed, with the functions that are used of it.
struct ImportedLibrary {
  std::string name;
  std::vector<ImportedFunction> functions;
};

struct Image {
  std::uint16_t machine;                 ///< IMAGE_FILE_MACHINE_AMD64 and the like
  std::vector<ImportedLibrary> imports;  ///< of a 64-bit image only
};

/// Reads the content of the file of a program or DLL.
/// @return nothing if it is none, or is cut off.
std::optional<Image> ParseImage(const std::string& bytes);

/// The version in a file's VERSIONINFO.
struct FileVersion {
  std::uint16_t major, minor, patch;
  friend auto operator<=>(const FileVersion&, const FileVersion&) = default;
};

std::wstring TextOf(const FileVersion& version);

/// @return nothing if the file at `path` has no version.
std::optional<FileVersion> ReadFileVersion(const std::wstring& path);

}  // namespace doctor
