// Places in texts.
#include <ostream>

#include "json/json_parser.h"
#include "json_test_support.h"

bool operator==(const TextPosition& a, const TextPosition& b) {
  return a.line == b.line && a.column == b.column;
}
void PrintTo(const TextPosition& position, std::ostream* out) {
  *out << "line " << position.line << ", column " << position.column;
}

namespace {

TEST(PositionInText, CountsLinesAndColumnsFromOne) {
  EXPECT_EQ(PositionInText("", 0), (TextPosition{1, 1}));
  EXPECT_EQ(PositionInText("ab", 0), (TextPosition{1, 1}));
  EXPECT_EQ(PositionInText("ab", 1), (TextPosition{1, 2}));
  EXPECT_EQ(PositionInText("ab\ncd", 2), (TextPosition{1, 3})) << "the line feed ends its line";
  EXPECT_EQ(PositionInText("ab\ncd", 3), (TextPosition{2, 1}));
  EXPECT_EQ(PositionInText("\r\n\r\n x", 5), (TextPosition{3, 2}));
}

TEST(PositionInText, CountsColumnsInCharacters) {
  const std::string text = "\xE9\x9B\xB6\n\xC3\xA4\xF0\x9F\x98\x80x";
  EXPECT_EQ(PositionInText(text, 3), (TextPosition{1, 2}));
  EXPECT_EQ(PositionInText(text, 6), (TextPosition{2, 2}));
  EXPECT_EQ(PositionInText(text, 10), (TextPosition{2, 3}));
}

TEST(PositionInText, OfAnOffsetPastTheEndIsTheEnd) {
  EXPECT_EQ(PositionInText("a\nbc", 100), (TextPosition{2, 3}));
}

TEST(PositionInText, IsDescribedByLineAndColumn) {
  EXPECT_EQ(DescribePositionInText("a\n\xC3\xA4 bc", 5), L"line 2, column 3");
}

}  // namespace
