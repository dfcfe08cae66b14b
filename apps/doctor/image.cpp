#include "image.h"

#include <windows.h>

#include <cstring>

#include "base/system_path.h"

namespace doctor {
namespace {

/// The image has no such place.
struct CutOff {};

/// The bytes of a file, read by offset or by the address that they have in memory.
class ImageBytes {
 public:
  explicit ImageBytes(const std::string& bytes) : m_bytes(bytes) {}

  template <class T>
  T At(std::size_t offset) const {
    if (offset > m_bytes.size() || m_bytes.size() - offset < sizeof(T)) throw CutOff{};
    T value;
    std::memcpy(&value, m_bytes.data() + offset, sizeof value);
    return value;
  }

  std::string TextAt(std::size_t offset) const {
    const std::size_t end = m_bytes.find('\0', offset);
    if (end == std::string::npos) throw CutOff{};
    return m_bytes.substr(offset, end - offset);
  }

  void AddSection(const IMAGE_SECTION_HEADER& section) { m_sections.push_back(section); }

  std::size_t OffsetOf(DWORD address) const {
    for (const IMAGE_SECTION_HEADER& section : m_sections) {
      if (address >= section.VirtualAddress && address - section.VirtualAddress < section.SizeOfRawData) {
        return section.PointerToRawData + (address - section.VirtualAddress);
      }
    }
    throw CutOff{};
  }

 private:
  const std::string& m_bytes;
  std::vector<IMAGE_SECTION_HEADER> m_sections;
};

std::vector<ImportedFunction> ReadFunctions(const ImageBytes& image, DWORD address) {
  std::vector<ImportedFunction> functions;
  for (std::size_t at = image.OffsetOf(address);; at += sizeof(ULONGLONG)) {
    const auto entry = image.At<ULONGLONG>(at);
    if (entry == 0) return functions;
    if (IMAGE_SNAP_BY_ORDINAL64(entry)) {
      functions.push_back({{}, static_cast<std::uint16_t>(IMAGE_ORDINAL64(entry))});
    } else {
      // A hint of two bytes stands before the name.
      functions.push_back({image.TextAt(image.OffsetOf(static_cast<DWORD>(entry)) + sizeof(WORD)), 0});
    }
  }
}

std::vector<ImportedLibrary> ReadImports(const ImageBytes& image, DWORD address) {
  std::vector<ImportedLibrary> imports;
  for (std::size_t at = image.OffsetOf(address);; at += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
    const auto entry = image.At<IMAGE_IMPORT_DESCRIPTOR>(at);
    if (entry.Name == 0) return imports;
    const DWORD names = entry.OriginalFirstThunk != 0 ? entry.OriginalFirstThunk : entry.FirstThunk;
    imports.push_back({image.TextAt(image.OffsetOf(entry.Name)), ReadFunctions(image, names)});
  }
}

Image Parse(const std::string& bytes) {
  ImageBytes image(bytes);
  if (image.At<WORD>(0) != IMAGE_DOS_SIGNATURE) throw CutOff{};
  const auto headers = static_cast<DWORD>(image.At<IMAGE_DOS_HEADER>(0).e_lfanew);
  if (image.At<DWORD>(headers) != IMAGE_NT_SIGNATURE) throw CutOff{};
  const auto file = image.At<IMAGE_FILE_HEADER>(headers + sizeof(DWORD));
  Image read{file.Machine, {}};
  if (file.Machine != IMAGE_FILE_MACHINE_AMD64) return read;
  const std::size_t optional = headers + sizeof(DWORD) + sizeof(IMAGE_FILE_HEADER);
  for (std::size_t index = 0; index < file.NumberOfSections; ++index) {
    image.AddSection(image.At<IMAGE_SECTION_HEADER>(optional + file.SizeOfOptionalHeader +
                                                    index * sizeof(IMAGE_SECTION_HEADER)));
  }
  const auto header = image.At<IMAGE_OPTIONAL_HEADER64>(optional);
  const DWORD imports = header.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  if (imports != 0) read.imports = ReadImports(image, imports);
  return read;
}

}  // namespace

std::optional<Image> ParseImage(const std::string& bytes) {
  try {
    return Parse(bytes);
  } catch (const CutOff&) {
    return std::nullopt;
  }
}

std::wstring TextOf(const FileVersion& version) {
  return std::to_wstring(version.major) + L"." + std::to_wstring(version.minor) + L"." +
         std::to_wstring(version.patch);
}

std::optional<FileVersion> ReadFileVersion(const std::wstring& path) {
  const std::wstring system_path = SystemPath(path);
  const DWORD size = GetFileVersionInfoSizeW(system_path.c_str(), nullptr);
  std::vector<std::byte> block(size);
  VS_FIXEDFILEINFO* info = nullptr;
  UINT length = 0;
  if (size == 0 || !GetFileVersionInfoW(system_path.c_str(), 0, size, block.data()) ||
      !VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&info), &length) ||
      length < sizeof *info) {
    return std::nullopt;
  }
  return FileVersion{HIWORD(info->dwFileVersionMS), LOWORD(info->dwFileVersionMS),
                     HIWORD(info->dwFileVersionLS)};
}

}  // namespace doctor
