// Text that is no text, at each place of an answer.
#include "case_name.h"
#include "hostile_fixture.h"
#include "run_tests.h"

namespace {

struct Insertion {
  const char* name;
  std::string bytes;
  std::optional<std::wstring> read_as{};  // nothing: the answer is refused
};

void PrintTo(const Insertion& insertion, std::ostream* stream) { *stream << insertion.name; }

class TextOfAnAnswer : public HostileClient, public testing::WithParamInterface<Insertion> {};

TEST_P(TextOfAnAnswer, IsReadOrRefusedWhereverItStands) {
  constexpr std::string_view kText = "{ text of an answer that is longer than one block }";
  const auto& [name, bytes, read_as] = GetParam();
  for (std::size_t place = 0; place <= kText.size() && !HasFailure(); ++place) {
    SetRunningStep("at " + std::to_string(place));
    const auto act =
        [frame = AnswerFrame(NextId(), std::string(kText).insert(place, bytes))](Conversation& host) {
          host.ReadRequest();
          host.Write(frame);
        };
    if (read_as) {
      ExpectAnswer(act, std::wstring(kText.begin(), kText.end()).insert(place, *read_as));
    } else {
      ExpectFailure(act, reasons::kNotJson);
    }
  }
  ExpectRecovery();
}

const Insertion kInsertions[] = {
    {"ByteThatContinuesNothing", "\x80"},
    {"ByteThatBeginsNothing", "\xFF"},
    {"OverlongSlash", "\xC0\xAF"},
    {"OverlongOfThreeBytes", "\xE0\x80\xAF"},
    {"HalfOfTwoBytes", "\xC3"},
    {"TwoOfThreeBytes", "\xE6\xB5"},
    {"ThreeOfFourBytes", "\xF0\x9F\x98"},
    {"EncodedSurrogate", "\xED\xA0\x80"},
    {"EncodedSurrogatePair", "\xED\xA0\xBD\xED\xB8\x80"},
    {"BeyondTheLastCharacter", "\xF4\x90\x80\x80"},
    {"HighSurrogateAlone", "\\ud83d"},
    {"LowSurrogateAlone", "\\ude00"},
    {"SurrogatesInTheWrongOrder", "\\ude00\\ud83d"},
    {"HighSurrogateBeforeAnother", "\\ud83d\\ud83d\\ude00"},
    {"NullByte", std::string(1, '\0')},
    {"ControlCharacter", "\x1F"},
    {"LineFeed", "\n"},
    {"UnknownEscape", "\\x41"},
    {"EscapeThatIsCutOff", "\\u12 "},
    {"QuoteThatEndsTheText", "\""},
    {"NullCharacter", "\\u0000", std::wstring(1, L'\0')},
    {"ByteOrderMark", "\xEF\xBB\xBF", L"\uFEFF"},
    {"LastCharacter", "\xF4\x8F\xBF\xBF", L"\U0010FFFF"},
    {"CharacterThatIsNone", "\xEF\xBF\xBF", L"\uFFFF"},
    {"SurrogatePair", "\\ud83d\\ude00", L"\U0001F600"},
};
INSTANTIATE_TEST_SUITE_P(, TextOfAnAnswer, testing::ValuesIn(kInsertions), CaseName<Insertion>);

}  // namespace
