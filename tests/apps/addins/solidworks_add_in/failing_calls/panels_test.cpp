#include <gtest/gtest.h>

#include "sweep.h"

namespace {

class FailingCalls : public testing::TestWithParam<Scenario> {};

TEST_P(FailingCalls, List) {
  Sweep sweep(GetParam());
  for (const auto& [name, n] : sweep.CallsOfImports()) std::cout << GetParam().name << " CALLS " << name << " " << n << "\n";
  std::cout << sweep.CallsOfHost().size() << " host calls\n";
}
TEST_P(FailingCalls, OfTheHost) { Sweep(GetParam()).FailHostCalls(); }
TEST_P(FailingCalls, OfTheSystem) { Sweep(GetParam()).FailImports(SystemFailures(), false); }
TEST_P(FailingCalls, ForMemory) { Sweep(GetParam()).FailImports(MemoryFailures(), true); }

std::vector<Scenario> All() {
  std::vector<Scenario> all;
  for (const auto& some : {ConnectionScenarios(), PanelScenarios(), DocumentScenarios(), PropertyScenarios()})
    all.insert(all.end(), some.begin(), some.end());
  return all;
}

INSTANTIATE_TEST_SUITE_P(, FailingCalls, testing::ValuesIn(All()), [](const auto& test) { return test.param.name; });

}  // namespace
