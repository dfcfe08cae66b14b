// Creating the classes' objects.
#include <windows.h>

#include "activation.h"
#include "base/hex_code.h"
#include "base/system_text.h"
#include "checks.h"
#include "files.h"

namespace doctor {
namespace {

void CheckClass(const Patient& patient, const RegisteredClass& registered, Report& report) {
  const std::string id = std::string("activation.") + registered.name;
  const std::wstring object = std::wstring(L"An object of the class ") + GuidText(registered.id);
  const Activation activation = CreateInOwnProcess(patient.own_program, registered.id, patient.patience);
  switch (activation.end) {
    case ActivationEnd::kCreated:
      report.Ok(id, object + L" can be created.");
      break;
    case ActivationEnd::kRefused:
      report.Fail(id,
                  object + L" cannot be created: " + SystemText(static_cast<DWORD>(activation.code)) + L" (" +
                      HexCode(activation.code) + L")",
                  L"See to the failures above this one first; if there are none, install the add-in again.");
      break;
    case ActivationEnd::kCrashed:
      report.Fail(
          id,
          object + L" cannot be created: the library crashed (exit code " + HexCode(activation.code) + L").",
          L"Install the add-in again; if that does not help, send a bundle (--bundle) to support.");
      break;
    case ActivationEnd::kHung:
      report.Fail(
          id,
          object + L" was not created within " + std::to_wstring(patient.patience.count()) +
              L" ms: the library hangs.",
          L"Look whether a virus scanner holds the library; else send a bundle (--bundle) to support.");
      break;
    case ActivationEnd::kNotStarted:
      report.Fail(id,
                  WithSystemText(L"This program could not start itself to create an object",
                                 static_cast<DWORD>(activation.code)),
                  L"Let this program be started from its folder.");
      break;
  }
}

}  // namespace

void CheckActivation(const Patient& patient, Report& report) {
  for (const RegisteredClass& registered : Classes()) CheckClass(patient, registered, report);
}

}  // namespace doctor
