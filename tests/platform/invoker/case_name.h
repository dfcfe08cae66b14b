/// @file Names of table-driven tests.
#pragma once

#include <gtest/gtest.h>

#include <string>

/// The name of a case whose parameter has one.
template <class Case>
std::string CaseName(const testing::TestParamInfo<Case>& info) {
  return info.param.name;
}
