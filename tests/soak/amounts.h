/// @file What a process holds, which must not grow.
#pragma once

#include <string>
#include <vector>

#include "failing_calls/holdings.h"
#include "scene.h"

/// How much of something there is.
struct Amount {
  const char* name;
  long long count = 0;
  /// By how much it may grow and count as flat: only where something else than the add-in takes of it, too.
  long long tolerance = 0;
};
using Amounts = std::vector<Amount>;

/// What there is now. Documents must be closed.
Amounts Measure(Scene& scene, const TaskMemorySpy& spy);

/// Those that have grown, in words, such as "handles: 120, then 340"; empty if none has.
std::string Growth(const Amounts& before, const Amounts& after);

/// The names of the amounts, and the amounts, as lines of one table.
std::string HeadOf(const Amounts& amounts);
std::string RowOf(const Amounts& amounts);
