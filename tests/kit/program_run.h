/// @file A test program, run as a process.
#pragma once

#include <filesystem>

#include "plan.h"

enum class Ending { kByItself, kTimeUp, kNotStarted };

/// Runs the program in `programs` in the folder `results`, where NAME.xml gets its results and NAME.txt what
/// it prints. What it has started ends with it.
Ending RunProgram(const PlannedProgram& program, const std::filesystem::path& programs,
                  const std::filesystem::path& results);
