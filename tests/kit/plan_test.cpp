#include "plan.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

constexpr const char* kPrograms = "a_test 120\nb_test 300\n";

std::string ErrorOf(std::string_view programs, std::string_view left_out) {
  try {
    ReadPlan(programs, left_out);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "no error";
}

}  // namespace

TEST(Plan, HasEachProgramWithItsSeconds) {
  const auto plan = ReadPlan(kPrograms, "");
  ASSERT_EQ(plan.size(), 2u);
  EXPECT_EQ(plan[0].name, "a_test");
  EXPECT_EQ(plan[0].seconds, 120u);
  EXPECT_EQ(plan[0].filter, "*");
  EXPECT_EQ(plan[1].name, "b_test");
}

TEST(Plan, LeavesOutTheTestsOfAllLinesOfAProgram) {
  const auto plan =
      ReadPlan(kPrograms, "# a comment\r\n\r\nb_test One.*:Two.* why\r\nb_test Three.* why not\r\n");
  EXPECT_EQ(plan.at(0).filter, "*");
  EXPECT_EQ(plan.at(1).filter, "*-One.*:Two.*:Three.*");
}

TEST(Plan, LeavesOutAWholeProgram) {
  EXPECT_EQ(ReadPlan(kPrograms, "a_test One.* why\na_test * why\na_test Two.* why\n").at(0).filter, "");
}

TEST(Plan, RefusesWhatItDoesNotUnderstand) {
  EXPECT_EQ(ErrorOf("a_test\n", ""), "not a program with its seconds: a_test");
  EXPECT_EQ(ErrorOf("a_test 0\n", ""), "not a program with its seconds: a_test 0");
  EXPECT_EQ(ErrorOf(kPrograms, "a_test One.*\n"), "not a program, its tests and a reason: a_test One.*");
  EXPECT_EQ(ErrorOf(kPrograms, "c_test * why\n"), "no such program: c_test * why");
}
