/// @file All checks.
#pragma once

#include "checks/checks.h"

namespace doctor {

/// Runs the checks of `areas`, or all of them if there are none, in the order of kAreas. An exception in a
/// check is a failure of its area and does not stop the others.
Report RunChecks(const Patient& patient, const std::vector<const Area*>& areas);

}  // namespace doctor
