#include "plan.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace {

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  std::istringstream stream{std::string(text)};
  for (std::string line; std::getline(stream, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (!line.empty() && !line.starts_with('#')) lines.push_back(line);
  }
  return lines;
}

PlannedProgram ReadProgram(const std::string& line) {
  std::istringstream words(line);
  PlannedProgram program{.name = "", .seconds = 0, .filter = "*"};
  if (!(words >> program.name >> program.seconds) || program.seconds == 0) {
    throw std::runtime_error("not a program with its seconds: " + line);
  }
  return program;
}

void LeaveOut(const std::string& line, std::vector<PlannedProgram>& programs) {
  std::istringstream words(line);
  std::string name, tests, reason;
  if (!(words >> name >> tests >> reason)) {
    throw std::runtime_error("not a program, its tests and a reason: " + line);
  }
  const auto program = std::ranges::find(programs, name, &PlannedProgram::name);
  if (program == programs.end()) throw std::runtime_error("no such program: " + line);
  if (tests == "*" || program->filter.empty()) {
    program->filter.clear();
  } else {
    program->filter += (program->filter == "*" ? "-" : ":") + tests;
  }
}

}  // namespace

std::vector<PlannedProgram> ReadPlan(std::string_view programs, std::string_view left_out) {
  std::vector<PlannedProgram> plan;
  for (const std::string& line : Lines(programs)) plan.push_back(ReadProgram(line));
  for (const std::string& line : Lines(left_out)) LeaveOut(line, plan);
  return plan;
}
