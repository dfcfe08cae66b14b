// A right answer in which something is wrong at every byte.
#include <algorithm>
#include <set>

#include "case_name.h"
#include "hostile_fixture.h"
#include "run_tests.h"

namespace {

// As it stands in the frame, and what the host gets: each kind of character that is written in its own way.
constexpr std::string_view kText =
    "{ \\\"a\\\" : \xC3\xBC\\u00fc\xE6\xB5\x8B\xF0\x9F\x98\x80\\ud83d\\ude00 }";
constexpr std::wstring_view kAnswer = L"{ \"a\" : \u00FC\u00FC\u6D4B\U0001F600\U0001F600 }";

/// A change at one byte of a frame.
struct Change {
  const char* name;
  /// @return the frames that `frame` may become at `place`.
  std::vector<std::string> (*apply)(const std::string& frame, std::size_t place);
};

void PrintTo(const Change& change, std::ostream* stream) { *stream << change.name; }

/// The values that a byte becomes: each of its bits turned over, and bytes that mean something in a header,
/// in JSON or in UTF-8.
std::set<char> WrongBytes(char right) {
  std::set<char> wrong;
  for (int bit = 0; bit < 8; ++bit) wrong.insert(static_cast<char>(right ^ 1 << bit));
  for (const char c : std::string_view("\0\t\n\r \"\\09-:e[{\x7F\x80\xC3\xED\xFF", 19)) wrong.insert(c);
  wrong.erase(right);
  return wrong;
}

std::vector<std::string> Replace(const std::string& frame, std::size_t place) {
  std::vector<std::string> frames;
  for (const char wrong : WrongBytes(frame[place])) {
    frames.push_back(frame);
    frames.back()[place] = wrong;
  }
  return frames;
}

std::vector<std::string> LeaveOut(const std::string& frame, std::size_t place) {
  return {std::string(frame).erase(place, 1)};
}

std::vector<std::string> Repeat(const std::string& frame, std::size_t place) {
  return {std::string(frame).insert(place, 1, frame[place])};
}

class AlteredAnswer : public HostileClient, public testing::WithParamInterface<Change> {
 protected:
  /// The client sends `frame` instead of the right one and ends, so that no host waits for more.
  void TryFrame(const std::string& frame, std::size_t place, bool in_header) {
    SetRunningStep("byte " + std::to_string(place) + " altered: " + frame);
    const Outcome outcome = Try([&frame](Conversation& host) {
      host.ReadRequest();
      host.Write(frame);
      host.Close();
    });
    if (outcome.answer.empty()) {
      ASSERT_EQ(outcome.lines.size(), 1u) << frame;
      EXPECT_TRUE(IsPrescribed(outcome.lines[0], in_header))
          << frame << testing::PrintToString(outcome.lines);
      return;
    }
    EXPECT_TRUE(outcome.lines.empty()) << frame << testing::PrintToString(outcome.lines);
    EXPECT_TRUE(in_header ? outcome.answer == kAnswer : IsNearlyTheAnswer(outcome.answer))
        << frame << testing::PrintToString(outcome.answer);
  }

 private:
  /// Whether `line` has a reason that a wrong byte may lead to. The header decides where the message ends.
  static bool IsPrescribed(const std::wstring& line, bool in_header) {
    std::vector<const wchar_t*> prescribed{reasons::kNotJson};
    const std::vector<const wchar_t*> more =
        in_header ? std::vector{reasons::kHeader, reasons::kNoColon, reasons::kNoLength, reasons::kLength,
                                reasons::kClosed}
                  : std::vector{reasons::kNotRpc, reasons::kOtherId, reasons::kNoText, reasons::kClosed};
    prescribed.insert(prescribed.end(), more.begin(), more.end());
    return std::ranges::any_of(prescribed,
                               [&line](const wchar_t* reason) { return line == LineFor(reason); });
  }

  /// Whether `answer` differs from the right one at one place only, by what one byte can change.
  static bool IsNearlyTheAnswer(std::wstring_view answer) {
    constexpr std::size_t kOneCharacter = 6;  // units; of "\ud83d" as single characters
    const auto same_begin =
        static_cast<std::size_t>(std::ranges::mismatch(answer, kAnswer).in1 - answer.begin());
    const std::wstring_view rest = answer.substr(same_begin);
    const std::size_t left = kAnswer.size() - same_begin;
    for (std::size_t changed = 0; changed <= std::min(left, kOneCharacter); ++changed) {
      const std::wstring_view end = kAnswer.substr(same_begin + changed);
      if (rest.ends_with(end) && rest.size() - end.size() <= kOneCharacter) return true;
    }
    return false;
  }
};

TEST_P(AlteredAnswer, IsAnAnswerOrNoneForAKnownReason) {
  constexpr std::uint64_t kFirstId = 1, kSecondId = 2;
  const std::size_t header = AnswerFrame(kFirstId, kText).find("\r\n\r\n") + 4;
  const std::size_t size = AnswerFrame(kFirstId, kText).size();
  for (std::size_t place = 0; place < size; ++place) {
    const bool kept = place % 2 == 1;
    const std::string right = AnswerFrame(kept ? kSecondId : kFirstId, kText);
    for (const std::string& frame : GetParam().apply(right, place)) {
      Prepare(Over::kFirst);
      if (kept) Prepare(Over::kKept);
      TryFrame(frame, place, place < header);
      AwaitClient();  // a request that crosses with the end would be lost
      ExpectRecovery();
      if (HasFailure()) return;
    }
  }
}

constexpr Change kChanges[] = {
    {"ByteReplaced", Replace}, {"ByteLeftOut", LeaveOut}, {"ByteRepeated", Repeat}};
INSTANTIATE_TEST_SUITE_P(, AlteredAnswer, testing::ValuesIn(kChanges), CaseName<Change>);

}  // namespace
