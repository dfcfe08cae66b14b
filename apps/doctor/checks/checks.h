/// @file The checks, one function for each area.
#pragma once

#include <chrono>
#include <string>

#include "add_in_library.h"
#include "report.h"

namespace doctor {

/// How long a DLL or a client that does not answer is awaited if the user does not say it.
inline constexpr std::chrono::seconds kDefaultPatience{10};

/// What the checks look at.
struct Patient {
  std::wstring own_program;  ///< the path of this program
  const AddInLibrary& add_in;
  std::chrono::milliseconds patience = kDefaultPatience;  ///< with a DLL or a client that does not answer
};

/// The entries of both classes, in each half of the registry, for the machine and for the user.
void CheckRegistration(const Patient& patient, Report& report);

/// The DLL: whether it is there, for which processor, its version, and what it imports.
void CheckLibrary(const Patient& patient, Report& report);

/// Whether COM creates objects of both classes.
void CheckActivation(const Patient& patient, Report& report);

void CheckTypeLibrary(const Patient& patient, Report& report);

/// The host's entries for the add-in, whether it loads the add-in at its start, and its release.
void CheckHost(const Patient& patient, Report& report);

/// View.json and PlmClient.json.
void CheckConfiguration(const Patient& patient, Report& report);

void CheckLog(const Patient& patient, Report& report);

/// Whether the PLM client is there and answers. Never starts it.
void CheckClient(const Patient& patient, Report& report);

/// An area and its check. The name is that in the ids of its findings.
struct Area {
  const char* name;
  void (*check)(const Patient& patient, Report& report);
};

inline constexpr Area kAreas[] = {
    {"registration", CheckRegistration},
    {"library", CheckLibrary},
    {"activation", CheckActivation},
    {"type_library", CheckTypeLibrary},
    {"host", CheckHost},
    {"configuration", CheckConfiguration},
    {"log", CheckLog},
    {"client", CheckClient},
};

}  // namespace doctor
