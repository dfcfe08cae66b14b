/// @file What a person and the host do with the add-in, as the sweeps repeat it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "stage.h"

/// One thing that is done, with everything around it as it must be to succeed.
struct Scenario {
  const char* name;
  /// Before each run; calls do not fail yet.
  void (*prepare)(Stage& stage);
  /// What is done; here calls fail. @return the HRESULT that the host gets.
  HRESULT (*run)(Stage& stage);
  /// What a good run must have caused, among other effects (Stage::Effects).
  std::vector<std::wstring> effects;
  /// What a good run returns.
  HRESULT result = S_OK;
  /// After how many runs with a failing call a good run checks that everything is as it was. Not 1 where
  /// preparing takes long.
  int runs_per_check = 1;
};

/// How a failed test prints its parameter.
void PrintTo(const Scenario& scenario, std::ostream* stream);

/// Connecting, disconnecting and what the host does by itself.
std::vector<Scenario> ConnectionScenarios();
/// The commands that only ask the PLM client.
std::vector<Scenario> PanelScenarios();
/// The commands that open, insert, replace and import files.
std::vector<Scenario> DocumentScenarios();
/// The commands that read and write properties.
std::vector<Scenario> PropertyScenarios();
/// The start of the log, a PLM client that nobody reaches, what is called by name.
std::vector<Scenario> ServiceScenarios();
/// All of these.
std::vector<Scenario> AllScenarios();
