// Each call that a scenario makes fails once. SCENARIOS is the function that lists the scenarios of this
// program.
#include <gtest/gtest.h>

#include "sweep.h"

namespace {

class FailingCall : public testing::TestWithParam<Scenario> {};

TEST_P(FailingCall, OfTheHost) { Sweep(GetParam()).FailHostCalls(); }

TEST_P(FailingCall, OfTheSystem) { Sweep(GetParam()).FailSystemCalls(); }

TEST_P(FailingCall, ForMemory) { Sweep(GetParam()).FailAllocations(); }

INSTANTIATE_TEST_SUITE_P(, FailingCall, testing::ValuesIn(SCENARIOS()),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
