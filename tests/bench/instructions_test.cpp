// How many instructions an answer of the PLM client may take for each megabyte of it, on its way from the
// pipe to the texts that a command reads, and back. Instructions are the same on a busy machine; the limits
// leave a tenth for other versions of the system's library.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

struct Budget {
  const char* job;
  const char* script;
  double millions;  // of instructions for each megabyte of UTF-8
};

void PrintTo(const Budget& budget, std::ostream* stream) { *stream << budget.job << budget.script; }

class InstructionBudget : public testing::TestWithParam<Budget> {};

/// The millions of instructions for each megabyte.
double Count(const Budget& budget) {
  const std::string command =
      std::string("'" COUNT_INSTRUCTIONS "' '" INSTRUCTION_JOBS "' ") + budget.job + " ours " + budget.script;
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
  double bytes = 0, instructions = 0;
  if (!output || std::fscanf(output.get(), "%lf %lf", &bytes, &instructions) != 2 || bytes <= 0) {
    throw std::runtime_error("no count from: " + command);
  }
  return instructions / bytes;
}

TEST_P(InstructionBudget, IsKept) {
  const Budget& budget = GetParam();
  const double millions = Count(budget);
  RecordProperty("millions", std::to_string(millions));
  EXPECT_GT(millions, budget.millions / 4) << "hardly anything was counted";
  EXPECT_LE(millions, budget.millions)
      << budget.job << " takes " << millions << " million instructions for a megabyte of a " << budget.script
      << " answer; allowed are " << budget.millions << " million";
}

INSTANTIATE_TEST_SUITE_P(, InstructionBudget,
                         testing::Values(Budget{"receive", "Latin", 40}, Budget{"receive", "Chinese", 55},
                                         Budget{"read", "Latin", 49}, Budget{"read", "Chinese", 61},
                                         Budget{"write", "Latin", 32}, Budget{"write", "Chinese", 41},
                                         Budget{"encode", "Latin", 9.1}, Budget{"encode", "Chinese", 13.5},
                                         Budget{"decode", "Latin", 12.9}, Budget{"decode", "Chinese", 17.6}),
                         [](const auto& test) { return std::string(test.param.job) + test.param.script; });

}  // namespace
