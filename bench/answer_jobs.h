/// @file What a command does with an answer.
#pragma once

#include <cstddef>
#include <string>

#include "CJsonObject.h"
#include "sample_answers.h"

/// Parses an answer and takes its paths. @return the number of characters in them.
inline std::size_t ReadPaths(const std::wstring& text) {
  CJsonObject answer;
  answer.CreateFrom(text);
  std::size_t size = 0;
  for (const wchar_t* list : kReadLists) {
    for (const auto& path : answer.GetPropertyStringArrayValue(list).second) size += path.size();
  }
  return size;
}
