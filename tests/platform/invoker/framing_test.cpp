#include "framing.h"

#include <gtest/gtest.h>

#include "case_name.h"
#include "no_answer.h"

namespace invoker {
namespace {

struct Case {
  const char* name;
  std::string bytes;
  std::wstring reason{};  // of the refusal; if empty, the content is "{}"
};

void PrintTo(const Case& c, std::ostream* stream) { *stream << c.name; }

/// Reads `bytes` in pieces. @return "complete: CONTENT", "incomplete" or the reason of the refusal.
std::wstring Read(std::string_view bytes, std::size_t piece) {
  FrameReader reader;
  try {
    for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size()))) {
      reader.Append(bytes.substr(0, piece));
    }
  } catch (const NoAnswer& refusal) {
    return refusal.reason;
  }
  if (!reader.IsComplete()) return L"incomplete";
  const std::string content = reader.TakeContent();
  return L"complete: " + std::wstring(content.begin(), content.end());
}

std::string HeaderOfSize(std::size_t size) {
  const std::string start = "Content-Length: 2\r\nX-Fill: ", end = "\r\n\r\n";
  return start + std::string(size - start.size() - end.size(), 'x') + end;
}

class Frames : public testing::TestWithParam<Case> {};

TEST_P(Frames, AreTheSameWholeAndByteByByte) {
  const std::wstring expected = GetParam().reason.empty() ? L"complete: {}" : GetParam().reason;
  EXPECT_EQ(Read(GetParam().bytes, GetParam().bytes.size()), expected);
  EXPECT_EQ(Read(GetParam().bytes, 1), expected);
}

const Case kCases[] = {
    {"Plain", "Content-Length: 2\r\n\r\n{}"},
    {"NameWithoutRegardToCase", "cOnTeNt-LENGTH: 2\r\n\r\n{}"},
    {"NoBlankBeforeTheValue", "Content-Length:2\r\n\r\n{}"},
    {"BlanksAroundTheValue", "Content-Length: \t2 \r\n\r\n{}"},
    {"OtherLineBefore", "Content-Type: application/json; charset=utf-8\r\nContent-Length: 2\r\n\r\n{}"},
    {"OtherLineBehind", "Content-Length: 2\r\nContent-Type: application/json\r\n\r\n{}"},
    {"OtherLineWithoutAValue", "X-Empty:\r\nContent-Length: 2\r\n\r\n{}"},
    {"HeaderOfExactly8KiB", HeaderOfSize(8192) + "{}"},

    {"HeaderOfOneByteMore", HeaderOfSize(8193) + "{}", L"the client sent a header over 8 KiB"},
    {"HeaderWithoutAnEnd", "X: " + std::string(8200, 'x'), L"the client sent a header over 8 KiB"},
    {"InvalidLineBeyond8KiB", "X: " + std::string(8200, 'x') + "\r\nA B: c\r\n\r\n{}",
     L"the client sent a header over 8 KiB"},
    {"WrongLengthBeyond8KiB", "X: " + std::string(8200, 'x') + "\r\nContent-Length: -2\r\n\r\n{}",
     L"the client sent a header over 8 KiB"},
    {"NoContentLength", "Content-Type: a\r\n\r\n{}", L"the client sent a header without Content-Length"},
    {"EmptyHeader", "\r\n{}", L"the client sent a header without Content-Length"},
    {"TwoContentLengths", "Content-Length: 2\r\ncontent-length: 2\r\n\r\n{}",
     L"the client sent a header with two Content-Length lines"},
    {"LengthEmpty", "Content-Length:\r\n\r\n{}", L"the client sent a Content-Length that is not a number"},
    {"LengthNegative", "Content-Length: -2\r\n\r\n{}",
     L"the client sent a Content-Length that is not a number"},
    {"LengthWithASign", "Content-Length: +2\r\n\r\n{}",
     L"the client sent a Content-Length that is not a number"},
    {"LengthInHexadecimal", "Content-Length: 0x2\r\n\r\n{}",
     L"the client sent a Content-Length that is not a number"},
    {"LengthOver64MiB", "Content-Length: 67108865\r\n\r\n", L"the client sent a frame over 64 MiB"},
    {"LengthBeyond64Bits", "Content-Length: 99999999999999999999999\r\n\r\n",
     L"the client sent a frame over 64 MiB"},
    {"LineWithoutAColon", "Content-Length\r\n\r\n{}", L"the client sent a header line without a colon"},
    {"NoName", ": 2\r\n\r\n{}", L"the client sent a header that is not valid"},
    {"BlankInTheName", "Content-Length : 2\r\n\r\n{}", L"the client sent a header that is not valid"},
    {"NoHeader", "{\"jsonrpc\":\"2.0\"}", L"the client sent a header that is not valid"},
    {"BareLineFeeds", "Content-Length: 2\n\n{}", L"the client sent a header that is not valid"},
    {"ByteOrderMark",
     "\xEF\xBB\xBF"
     "Content-Length: 2\r\n\r\n{}",
     L"the client sent a header that is not valid"},

    {"HeaderNotWhole", "Content-Length: 2\r\n\r", L"incomplete"},
    {"ContentNotWhole", "Content-Length: 2\r\n\r\n{", L"incomplete"},
    {"Exactly64MiBAnnounced", "Content-Length: 67108864\r\n\r\n{", L"incomplete"},
};
INSTANTIATE_TEST_SUITE_P(, Frames, testing::ValuesIn(kCases), CaseName<Case>);

TEST(FrameReader, ReportsBytesAfterTheFrame) {
  FrameReader exact, more;
  exact.Append("Content-Length: 2\r\n\r\n{}");
  more.Append("Content-Length: 2\r\n\r\n{}C");
  EXPECT_FALSE(exact.HasSurplus());
  EXPECT_TRUE(more.HasSurplus());
  EXPECT_EQ(more.TakeContent(), "{}");
}

TEST(FrameReader, AcceptsAFrameWithoutContent) {
  FrameReader reader;
  reader.Append("Content-Length: 0\r\n\r\n");
  EXPECT_TRUE(reader.IsComplete());
  EXPECT_EQ(reader.TakeContent(), "");
}

TEST(MakeFrame, CountsBytesAndRefusesMoreThan64MiB) {
  EXPECT_EQ(MakeFrame("\xC3\xA4"), "Content-Length: 2\r\n\r\n\xC3\xA4");
  EXPECT_THROW(MakeFrame(std::string(kMaxContentBytes + 1, 'x')), NoAnswer);
}

}  // namespace
}  // namespace invoker
