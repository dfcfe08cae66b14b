// View.json and PlmClient.json.
#include <windows.h>

#include "CZALException.h"
#include "base/file_attributes.h"
#include "checks.h"
#include "configuration/client_configuration.h"
#include "configuration/names.h"
#include "configuration/places.h"
#include "configuration/view_faults.h"
#include "menu_rules.h"
#include "places_text.h"

namespace doctor {
namespace {

constexpr wchar_t kCorrectView[] =
    L"Correct the file (see docs\\view-json.html), then switch the add-in off and on in the CAD application.";
constexpr wchar_t kCorrectClient[] =
    L"Correct the file (see docs\\plm-client-json.html); meanwhile the defaults hold. It is read at the next "
    L"connection.";

/// `text` with a full stop, unless it ends a sentence already.
std::wstring Sentence(const std::wstring& text) {
  return text.ends_with(L'.') || text.ends_with(L'!') ? text : text + L".";
}

/// The file `name` that the add-in uses; tells which one that is. Empty if there is none.
std::wstring Find(const Patient& patient, const wchar_t* name, std::vector<std::wstring>& places) {
  places = ConfigurationPlaces(kConfigurationName, name, patient.add_in.Folder());
  return FirstFile(places);
}

void CheckViewContent(const CJsonObject& view, const std::wstring& path, const AddInLibrary& library,
                      Report& report) {
  const std::optional<ViewRules> rules = ReadViewRules(library);
  if (!rules) {
    report.PassOver("configuration.view",
                    L"The add-in's library, which knows the commands, cannot be read; " + path +
                        L" is JSON, but its items are not checked.");
    return;
  }
  const std::vector<std::wstring> faults = FindViewFaults(view, *rules);
  const std::wstring place = path + L": ";
  for (const std::wstring& fault : faults) {
    report.Fail("configuration.view", place + Sentence(fault), kCorrectView);
  }
  const std::vector<std::wstring> slips = FindViewSlips(view);
  for (const std::wstring& slip : slips) {
    report.Warn("configuration.view", place + Sentence(slip), kCorrectView);
  }
  if (faults.empty() && slips.empty()) report.Ok("configuration.view", L"View.json has no mistake.");
}

void CheckView(const Patient& patient, Report& report) {
  std::vector<std::wstring> places;
  const std::wstring path = Find(patient, kViewFile, places);
  if (path.empty()) {
    report.Fail("configuration.view_file",
                L"There is no View.json, so that the add-in cannot be connected. " + LookedAt(places, path),
                L"Install the add-in again, or put a View.json into one of these places.");
    return;
  }
  report.Ok("configuration.view_file", L"View.json is read from " + path + L". " + LookedAt(places, path));
  try {
    CJsonObject view;
    view.CreateFromFile(path);
    CheckViewContent(view, path, patient.add_in, report);
  } catch (const CZALException& error) {
    report.Fail("configuration.view", Sentence(error.GetErrorMessage()) + L" The add-in cannot be connected.",
                kCorrectView);
  }
}

void CheckClientFile(const Patient& patient, Report& report) {
  std::vector<std::wstring> places;
  const std::wstring path = Find(patient, kClientFile, places);
  if (path.empty()) {
    report.Ok("configuration.client_file",
              L"There is no PlmClient.json; the defaults hold. " + LookedAt(places, path));
    return;
  }
  report.Ok("configuration.client_file",
            L"PlmClient.json is read from " + path + L". " + LookedAt(places, path));
  try {
    CJsonObject file;
    file.CreateFromFile(path);
    const ClientFile read = ReadClientMembers(file);
    const std::wstring place = path + L": ";
    for (const std::wstring& fault : read.faults) {
      report.Fail("configuration.client", place + Sentence(fault), kCorrectClient);
    }
    for (const std::wstring& slip : FindClientSlips(file)) {
      report.Warn("configuration.client", place + Sentence(slip), kCorrectClient);
    }
    if (read.faults.empty()) report.Ok("configuration.client", L"PlmClient.json has no mistake.");
  } catch (const CZALException& error) {
    report.Fail("configuration.client", Sentence(error.GetErrorMessage()) + L" The defaults hold.",
                kCorrectClient);
  }
}

}  // namespace

void CheckConfiguration(const Patient& patient, Report& report) {
  CheckView(patient, report);
  CheckClientFile(patient, report);
}

}  // namespace doctor
