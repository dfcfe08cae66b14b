// The DLL as a file.
#include <windows.h>

#include "CStringHelper.h"
#include "base/file_attributes.h"
#include "checks.h"
#include "files.h"
#include "image.h"
#include "version.h"

namespace doctor {
namespace {

constexpr FileVersion kOwnVersion = {PRODUCT_VERSION_FIELDS};
constexpr std::uint64_t kLargestLibrary = 256ull * 1024 * 1024;
constexpr wchar_t kInstallAgain[] = L"Install the add-in again.";

void CheckArchitecture(const Image& image, Report& report) {
  if (image.machine == IMAGE_FILE_MACHINE_AMD64) {
    report.Ok("library.architecture", L"The library is a 64-bit one, as the CAD application is.");
  } else if (image.machine == IMAGE_FILE_MACHINE_I386) {
    report.Fail("library.architecture", L"The library is a 32-bit one. The CAD application cannot load it.",
                kInstallAgain);
  } else {
    report.Fail("library.architecture",
                L"The library is made for another processor (machine " + std::to_wstring(image.machine) +
                    L"). The CAD application cannot load it.",
                kInstallAgain);
  }
}

void CheckVersion(const std::wstring& path, Report& report) {
  const std::optional<FileVersion> version = ReadFileVersion(path);
  const std::wstring own = L"; this program has version " + TextOf(kOwnVersion) + L".";
  if (!version) {
    report.Fail("library.version", L"The library has no version.", kInstallAgain);
  } else if (*version == kOwnVersion) {
    report.Ok("library.version",
              L"The library has version " + TextOf(*version) + L", the same as this program.");
  } else if (*version < kOwnVersion) {
    report.Fail("library.version", L"The library has the old version " + TextOf(*version) + own,
                L"Close the CAD application on this machine, and install the update again.");
  } else {
    report.Warn("library.version", L"The library has the newer version " + TextOf(*version) + own,
                L"Use the program that was installed with the library.");
  }
}

/// What is missing of a library that is imported; empty if nothing is.
std::wstring FindMissing(const ImportedLibrary& import) {
  std::wstring name = CStringHelper::UTF8ToUnicode(import.name);
  const UniqueModule module(LoadLibraryExW(name.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
  if (!module) return name;
  for (const ImportedFunction& function : import.functions) {
    const char* const wanted =
        function.name.empty() ? MAKEINTRESOURCEA(function.ordinal) : function.name.c_str();
    if (GetProcAddress(module.get(), wanted)) continue;
    return (function.name.empty() ? L"number " + std::to_wstring(function.ordinal)
                                  : CStringHelper::UTF8ToUnicode(function.name)) +
           L" of " + name;
  }
  return {};
}

void CheckImports(const Image& image, Report& report) {
  bool is_complete = true;
  for (const ImportedLibrary& import : image.imports) {
    const std::wstring missing = FindMissing(import);
    if (missing.empty()) continue;
    is_complete = false;
    report.Fail("library.imports", L"The library needs " + missing + L", which this system does not have.",
                L"Install the add-in again; if that does not help, update Windows.");
  }
  if (is_complete) {
    report.Ok("library.imports", L"All " + std::to_wstring(image.imports.size()) +
                                     L" libraries that it needs are part of this system.");
  }
}

/// Whether the library is there. @return false if there is nothing to look at.
bool CheckFile(const AddInLibrary& library, Report& report) {
  if (library.Path().empty()) {
    report.Fail("library.file", L"No library is registered, and none lies beside this program.",
                kInstallAgain);
    return false;
  }
  if (!IsFile(library.Path())) {
    report.Fail("library.file", L"The registered library " + library.Path() + L" does not exist.",
                L"Install the add-in again, or register it where it is now.");
    return false;
  }
  if (!library.UnusedCopy().empty()) {
    report.Warn("library.file",
                L"The registered library is " + library.Path() +
                    L", not the one beside this program, which is not used.",
                L"If the add-in was installed by its package, unregister the other library with regsvr32 /u, "
                L"and repair the installation.");
    return true;
  }
  report.Ok("library.file", library.IsRegistered()
                                ? L"The registered library is " + library.Path() + L"."
                                : L"No library is registered. The one beside this program is looked at: " +
                                      library.Path() + L".");
  return true;
}

}  // namespace

void CheckLibrary(const Patient& patient, Report& report) {
  const std::wstring& path = patient.add_in.Path();
  if (!CheckFile(patient.add_in, report)) return;
  const FileContent content = ReadFileContent(path, kLargestLibrary);
  const std::optional<Image> image = ParseImage(content.bytes);
  if (content.error != ERROR_SUCCESS) {
    report.Fail("library.architecture", WithSystemText(path + L" cannot be read", content.error),
                L"Let all accounts read the file.");
  } else if (!image) {
    report.Fail("library.architecture", path + L" is damaged: it is not a library.", kInstallAgain);
  } else {
    CheckArchitecture(*image, report);
    CheckVersion(path, report);
    CheckImports(*image, report);
  }
}

}  // namespace doctor
