/// @file Answers that fill the largest frame.
#pragma once

#include <span>
#include <string>

struct LargeAnswer {
  const char* name;
  /// The answer as it stands in the frame, within the quotes of "answer". With the id 1, the frame's content
  /// has exactly 64 MiB.
  std::string (*make)();
};

std::span<const LargeAnswer> LargeAnswers();
