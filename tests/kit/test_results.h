/// @file What a test program says about its tests.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct TestResults {
  int passed = 0;
  int failed = 0;
  std::vector<std::string> failures;  // Suite.Name of each failed test
};

/// Reads the results that GoogleTest wrote as XML. @return nothing if they are not whole.
std::optional<TestResults> ReadResults(std::string_view xml);
