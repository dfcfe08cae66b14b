// A right answer that comes in pieces of every kind: the host never takes a part for the whole.
#include <algorithm>
#include <random>

#include "hostile_fixture.h"
#include "run_tests.h"

namespace {

constexpr std::string_view kText = "\\\"\xC3\xBC\\u00fc\xF0\x9F\x98\x80";
constexpr wchar_t kAnswer[] = L"\"\u00FC\u00FC\U0001F600";

class AnswerInPieces : public HostileClient {
 protected:
  /// The client sends the answer `text` in pieces that end at `places` of the frame.
  void TryPieces(std::string_view text, const std::wstring& answer, const std::vector<std::size_t>& places) {
    SetRunningStep("pieces that end at " + testing::PrintToString(places));
    ExpectAnswer(
        [frame = AnswerFrame(NextId(), text), places](Conversation& host) {
          host.ReadRequest();
          std::size_t begin = 0;
          for (const std::size_t end : places) {
            host.WriteThrough(std::string_view(frame).substr(begin, end - begin));
            begin = end;
          }
          host.Write(std::string_view(frame).substr(begin));
        },
        answer);
  }

  /// Places in an answer of `size` bytes, in order.
  std::vector<std::size_t> RandomPlaces(std::size_t size, std::size_t count) {
    std::vector<std::size_t> places(count);
    for (std::size_t& place : places) place = std::uniform_int_distribution<std::size_t>(0, size)(m_random);
    std::ranges::sort(places);
    return places;
  }

  ~AnswerInPieces() override { EXPECT_EQ(Connections(), 1) << "a right answer keeps the connection"; }

 private:
  std::mt19937 m_random{20'260'101};
};

TEST_F(AnswerInPieces, IsWholeWhereverItIsSplit) {
  const std::size_t size = AnswerFrame(10, kText).size();
  for (std::size_t place = 1; place < size && !HasFailure(); ++place) TryPieces(kText, kAnswer, {place});
}

TEST_F(AnswerInPieces, IsWholeByteByByte) {
  for (int i = 0; i < 10; ++i) {
    ExpectAnswer(
        [frame = AnswerFrame(NextId(), kText)](Conversation& host) {
          host.ReadRequest();
          host.WriteThrough(frame, 1);
        },
        kAnswer);
  }
}

TEST_F(AnswerInPieces, IsWholeIfItIsSplitAtRandom) {
  const std::size_t size = AnswerFrame(10, kText).size();
  for (int i = 0; i < 200 && !HasFailure(); ++i) {
    TryPieces(kText, kAnswer, RandomPlaces(size, 1 + static_cast<std::size_t>(i % 10)));
  }
}

// The host reads what is longer than 16 KiB into another buffer, and never more than 1 MiB at once.
TEST_F(AnswerInPieces, IsWholeIfALargeOneIsSplitAtRandom) {
  constexpr std::size_t kMiB = 1024 * 1024;
  std::string text(2 * kMiB, ' ');
  for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char>('a' + i % 23);
  const std::wstring answer(text.begin(), text.end());
  for (int i = 0; i < 20 && !HasFailure(); ++i) {
    TryPieces(text, answer, RandomPlaces(i % 2 ? text.size() : 40'000, 6));
  }
}

}  // namespace
