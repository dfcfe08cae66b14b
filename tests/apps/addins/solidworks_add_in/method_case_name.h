/// @file Names of tests whose parameter is a method of the host.
#pragma once

#include <gtest/gtest.h>

#include <cwctype>
#include <string>
#include <string_view>

/// The letters and digits of a method, for the name of a test: "IModelDoc2QueryInterfaceIDrawingDoc".
inline std::string MethodInName(std::wstring_view method) {
  std::string name;
  for (const wchar_t character : method) {
    if (character < 0x80 && std::iswalnum(character)) name += static_cast<char>(character);
  }
  return name;
}

/// The name of a case whose parameter is a method.
inline std::string MethodCaseName(const testing::TestParamInfo<const wchar_t*>& info) {
  return MethodInName(info.param);
}
