// Works for a long time in one host process, and fails if anything grows or comes out wrong.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "soak.h"

namespace {

constexpr const char* kHelp =
    "usage: soak [COMMANDS [KILLED [CONNECTIONS [SEED]]]]\n"
    "\n"
    "Works with the add-in in one host process: COMMANDS mixed commands (100000), KILLED more while the PLM "
    "client is\n"
    "killed and started again (1000), CONNECTIONS connections (1000). Ends with 1 if a command comes out "
    "wrong or\n"
    "anything grows that the process holds. The order is random; SEED repeats one.\n";

struct Options {
  int counts[3] = {100'000, 1'000, 1'000};
  unsigned seed = std::random_device{}() % 1'000'000;
};

int NumberOf(const std::string& text) {
  constexpr std::size_t kMostDigits = 8;
  if (text.empty() || text.size() > kMostDigits ||
      text.find_first_not_of("0123456789") != std::string::npos) {
    throw std::runtime_error("\"" + text + "\" is not a number");
  }
  return std::stoi(text);
}

Options Parse(const std::vector<std::string>& arguments) {
  constexpr std::size_t kMost = 4;
  if (arguments.size() > kMost) throw std::runtime_error("too many arguments");
  Options options;
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const int number = NumberOf(arguments[index]);
    if (index + 1 == kMost) {
      options.seed = static_cast<unsigned>(number);
    } else {
      options.counts[index] = number;
    }
  }
  return options;
}

int Run(const Options& options) {
  Soak soak(options.seed, [](const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
  });
  if (options.counts[0] > 0) soak.RunCommands(options.counts[0]);
  if (options.counts[1] > 0) soak.RunWithKilledClient(options.counts[1]);
  if (options.counts[2] > 0) soak.RunConnections(options.counts[2]);
  std::printf("%s\n", soak.Faults().empty() ? "flat, and every outcome right" : "FAILED");
  return soak.Faults().empty() ? 0 : 1;
}

}  // namespace

int main(int count, char** texts) {
  SetConsoleOutputCP(CP_UTF8);
  const std::vector<std::string> arguments(texts + 1, texts + count);
  if (!arguments.empty() && arguments[0] == "--help") {
    std::fputs(kHelp, stdout);
    return 0;
  }
  try {
    return Run(Parse(arguments));
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "soak: %s\n", failure.what());
    return 2;
  }
}
