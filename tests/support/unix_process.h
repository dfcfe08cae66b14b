/// @file What the system on which Wine runs counts for this process. scripts/wine must have started the
/// program.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

/// The number of this process, and of its main thread.
/// @throws std::runtime_error if it is not known.
inline std::string UnixProcess() {
  const char* const process = std::getenv("UNIX_PROCESS");
  if (!process) throw std::runtime_error("UNIX_PROCESS is not set: start the program with scripts/wine");
  return process;
}

/// The number in the line "NAME: NUMBER" of a file in the system's folder of this process, such as "status".
/// @throws std::runtime_error with the file if it cannot be read or has no such line.
inline long long UnixCount(const std::string& file, const std::string& name) {
  const std::string path = "Z:\\proc\\" + UnixProcess() + "\\" + file;
  const std::unique_ptr<FILE, int (*)(FILE*)> lines(std::fopen(path.c_str(), "r"), std::fclose);
  if (!lines) throw std::runtime_error("cannot read " + path);
  const std::string head = name + ":";
  for (char line[200]; std::fgets(line, sizeof line, lines.get());) {
    if (std::string(line).starts_with(head)) return std::atoll(line + head.size());
  }
  throw std::runtime_error("no line " + head + " in " + path);
}
