#include "test_results.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kXml = R"(<?xml version="1.0" encoding="UTF-8"?>
<testsuites tests="3" failures="1" disabled="0" errors="0" time="0.1" name="AllTests">
  <testsuite name="Suite" tests="3" failures="1">
    <testcase name="Passes" file="a.cpp" line="3" status="run" time="0" classname="Suite" />
    <testcase name="Fails/0" status="run" classname="All/Suite">
      <failure message="a.cpp:7&#x0A;first" type=""></failure>
      <failure message="a.cpp:8&#x0A;second" type=""></failure>
    </testcase>
    <testcase name="PassesToo" status="run" classname="Suite" />
  </testsuite>
</testsuites>
)";

}  // namespace

TEST(Results, AreCountedAndNamed) {
  const auto results = ReadResults(kXml);
  ASSERT_TRUE(results);
  EXPECT_EQ(results->passed, 2);
  EXPECT_EQ(results->failed, 1);
  EXPECT_EQ(results->failures, std::vector<std::string>{"All/Suite.Fails/0"});
}

TEST(Results, ThatAreNotWholeAreNone) {
  EXPECT_FALSE(ReadResults(""));
  EXPECT_FALSE(ReadResults(std::string_view(kXml).substr(0, 300)));
  EXPECT_FALSE(ReadResults("<testsuites failures=\"0\"></testsuites>"));
  EXPECT_FALSE(ReadResults("<testsuites tests=\"many\" failures=\"0\"></testsuites>"));
}
