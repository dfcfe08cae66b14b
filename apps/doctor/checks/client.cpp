// The PLM client at the other end of the pipe.
#include <windows.h>

#include "CZALException.h"
#include "base/file_attributes.h"
#include "checks.h"
#include "configuration/client_configuration.h"
#include "configuration/names.h"
#include "configuration/places.h"
#include "invoker/client_probe.h"

namespace doctor {
namespace {

using invoker::ClientProbe;
using invoker::ClientState;

/// What the add-in would use. A file that cannot be read means the defaults; that is told elsewhere.
ClientConfiguration Configured(const Patient& patient) {
  const std::wstring path =
      FirstFile(ConfigurationPlaces(kConfigurationName, kClientFile, patient.add_in.Folder()));
  try {
    return path.empty() ? ClientConfiguration{} : ReadClientFile(path).configuration;
  } catch (const CZALException&) {
    return {};
  }
}

void CheckProgram(const std::wstring& program, Report& report) {
  constexpr wchar_t kCorrect[] = L"Correct \"client\" in PlmClient.json, or install the PLM client.";
  if (program.empty()) {
    report.PassOver("client.program", L"No program of the PLM client is configured; the add-in starts none.");
  } else if (!invoker::IsFullProgramPath(program)) {
    report.Fail("client.program", L"The PLM client's program " + program + L" is not a full path.", kCorrect);
  } else if (!IsFile(program)) {
    report.Fail("client.program", L"The PLM client's program " + program + L" does not exist.", kCorrect);
  } else {
    report.Ok("client.program", L"The PLM client's program is " + program + L". It was not started.");
  }
}

void TellNoPipe(const ClientProbe& probe, bool has_program, Report& report) {
  if (has_program) {
    report.Ok("client.pipe", L"The PLM client does not run: there is no pipe " + probe.pipe +
                                 L". The add-in starts its program at the first command.");
  } else {
    report.Warn(
        "client.pipe",
        L"The PLM client does not run, and no program is configured for the add-in to start: there is no "
        L"pipe " +
            probe.pipe + L". Commands get no answer.",
        L"Start the PLM client, or name its program as \"client\" in PlmClient.json.");
  }
}

/// The owner's right, of a pipe that was opened.
void TellOwner(const ClientProbe& probe, Report& report) {
  if (probe.state == ClientState::kNotTrusted) {
    report.Fail("client.owner", L"The add-in sends nothing to this pipe: " + probe.reason + L".",
                L"Start the PLM client with the account and in the session of the CAD application.");
  } else {
    report.Ok("client.owner", L"The pipe belongs to this account and is served in this session.");
  }
}

void TellAnswer(const ClientProbe& probe, Report& report) {
  if (probe.state == ClientState::kAnswers) {
    report.Ok("client.answer",
              L"The PLM client answered in " + std::to_wstring(probe.time.count()) + L" ms.");
  } else {
    report.Fail("client.answer", L"The PLM client did not answer: " + probe.reason + L".",
                L"Start the PLM client anew; if it answers no request then either, tell its maker.");
  }
}

void TellState(const ClientProbe& probe, bool has_program, Report& report) {
  const std::wstring served = L"The PLM client serves the pipe " + probe.pipe;
  switch (probe.state) {
    case ClientState::kNoPipe:
      TellNoPipe(probe, has_program, report);
      return;
    case ClientState::kBusy:
      report.Ok("client.pipe", served + L"; it is in use, so that it was asked nothing.");
      return;
    case ClientState::kNotOpened:
      report.Fail(
          "client.pipe", L"The PLM client cannot be reached: " + probe.reason + L".",
          L"Correct \"pipe\" in PlmClient.json, or let the PLM client admit this account to its pipe.");
      return;
    case ClientState::kNotTrusted:
    case ClientState::kSilent:
    case ClientState::kAnswers:
      report.Ok("client.pipe", served + L".");
      TellOwner(probe, report);
      if (probe.state != ClientState::kNotTrusted) TellAnswer(probe, report);
      return;
  }
}

}  // namespace

void CheckClient(const Patient& patient, Report& report) {
  const ClientConfiguration configuration = Configured(patient);
  CheckProgram(configuration.program, report);
  TellState(invoker::ProbeClient(configuration, patient.patience), !configuration.program.empty(), report);
}

}  // namespace doctor
