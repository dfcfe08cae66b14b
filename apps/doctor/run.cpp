#include "run.h"

#include <algorithm>

#include "errors/caught_exception.h"

namespace doctor {
namespace {

void RunOne(const Area& area, const Patient& patient, Report& report) {
  try {
    area.check(patient, report);
  } catch (...) {
    report.Fail(std::string(area.name) + ".check",
                L"The check could not be finished: " + CaughtException::Describe().text,
                L"Send this to support, with a bundle (--bundle).");
  }
}

}  // namespace

Report RunChecks(const Patient& patient, const std::vector<const Area*>& areas) {
  Report report;
  for (const Area& area : kAreas) {
    if (areas.empty() || std::ranges::find(areas, &area) != areas.end()) RunOne(area, patient, report);
  }
  return report;
}

}  // namespace doctor
