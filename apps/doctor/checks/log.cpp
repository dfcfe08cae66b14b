// The log's folder and its configuration.
#include <windows.h>

#include "checks.h"
#include "configuration/log_properties.h"
#include "configuration/names.h"
#include "configuration/places.h"
#include "files.h"
#include "places_text.h"

namespace doctor {
namespace {

constexpr wchar_t kWhereElse[] =
    L"Let the account write there, or name another folder in the environment variable TAVO_HOME.";

/// @return whether there is a folder at all.
bool CheckFolder(const std::wstring& folder, Report& report) {
  if (folder.empty()) {
    report.Fail("log.folder", L"There is no log folder, because neither TAVO_HOME nor APPDATA is set.",
                L"Set the environment variable APPDATA or TAVO_HOME for the CAD application.");
    return false;
  }
  const DWORD error = TryToWriteIn(folder);
  if (error == ERROR_SUCCESS) {
    report.Ok("log.folder", L"The log folder can be written: " + folder + L".");
  } else {
    report.Fail("log.folder", WithSystemText(L"The log folder " + folder + L" cannot be written", error),
                kWhereElse);
  }
  return true;
}

}  // namespace

void CheckLog(const Patient& patient, Report& report) {
  const std::wstring folder = LogFolder();
  if (!CheckFolder(folder, report)) return;
  const std::vector<std::wstring> places = LogConfigurationPlaces(folder, patient.add_in.Folder());
  const std::wstring path = FirstFile(places);
  if (path.empty()) {
    report.Ok("log.file",
              L"There is no Log4cplus.properties; the built-in set-up holds. " + LookedAt(places, path));
    return;
  }
  report.Ok("log.file", L"The log is configured by " + path + L". " + LookedAt(places, path));
  ExaminedLogFiles files;
  const std::vector<std::wstring> faults = FindLogFaults(path, {folder, kLogApplication}, files);
  for (const std::wstring& fault : faults) {
    report.Fail("log.configuration", fault + L".",
                L"Correct the file; meanwhile what cannot be followed is replaced. It is read when the CAD "
                L"application starts.");
  }
  if (faults.empty()) report.Ok("log.configuration", L"The log's configuration has no mistake.");
}

}  // namespace doctor
