/// @file Comparing lists of texts, such as calls or log lines: a failure shows only the place of the
/// difference.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "base/utf8.h"

/// Expects a list of texts to be equal to the list that follows, such as `Texts{L"a", L"b"}`.
#define EXPECT_SAME_ENTRIES(actual, ...) EXPECT_PRED_FORMAT2(SameEntries, actual, (__VA_ARGS__))

namespace list_difference {

inline const std::string& Printed(const std::string& entry) { return entry; }
inline std::string Printed(const std::wstring& entry) { return utf8::Encode<wchar_t>(entry); }

/// The number of entries, and the entries around `index`, one a line, with a mark at `index` itself.
template <class Text>
std::string Excerpt(const std::vector<Text>& list, std::size_t index) {
  constexpr std::size_t kNeighbours = 2;
  std::string text = std::to_string(list.size()) + (list.size() == 1 ? " entry:\n" : " entries:\n");
  const std::size_t end = std::min(list.size(), index + kNeighbours + 1);
  for (std::size_t place = index - std::min(index, kNeighbours); place < end; ++place) {
    text += (place == index ? "  > " : "    ") + std::to_string(place) + ": " + Printed(list[place]) + "\n";
  }
  if (index == list.size()) text += "  > end of the list\n";
  return text;
}

}  // namespace list_difference

/// Whether two lists are equal; if not, the message has the first index at which they differ, and the entries
/// around it. For EXPECT_PRED_FORMAT2, which passes the arguments' source texts too.
template <class Text>
testing::AssertionResult SameEntries(const char* actual_source, const char* /*expected_source*/,
                                     const std::vector<Text>& actual, const std::vector<Text>& expected) {
  if (actual == expected) return testing::AssertionSuccess();
  const auto difference = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
  const auto index = static_cast<std::size_t>(difference.first - actual.begin());
  return testing::AssertionFailure() << actual_source << " differs from the expected list at index " << index
                                     << "\nactual, " << list_difference::Excerpt(actual, index)
                                     << "expected, " << list_difference::Excerpt(expected, index);
}
