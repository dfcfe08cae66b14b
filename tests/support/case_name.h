/// @file Names for the cases of parameterised tests.
#pragma once

#include <gtest/gtest.h>

#include <string>

/// The name of a case: the member `name` of its parameter. For INSTANTIATE_TEST_SUITE_P.
template <class Case>
std::string CaseName(const testing::TestParamInfo<Case>& info) {
  return info.param.name;
}
