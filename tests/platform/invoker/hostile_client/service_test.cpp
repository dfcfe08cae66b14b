// However an answer comes, the host's thread serves COM calls and repaints meanwhile.
#include <algorithm>
#include <iostream>

#include "CJsonObject.h"
#include "case_name.h"
#include "hostile_fixture.h"
#include "service_meter.h"

namespace {

constexpr std::size_t kKiB = 1024, kMiB = 1024 * kKiB;
constexpr double kNoticed = 200;  // milliseconds

/// How the client sends an answer.
struct Manner {
  const char* name;
  std::size_t pieces;  ///< as many writes
  DWORD pause;         ///< milliseconds, behind each
};

void PrintTo(const Manner& manner, std::ostream* stream) { *stream << manner.name; }

class Service : public HostileClient {
 protected:
  /// The absences of the thread in one command whose answer has this text, and in reading the answer as the
  /// commands do.
  Absence Measure(const std::string& text, const Manner& manner) {
    Prepare(Over::kKept);
    const auto act = [&manner, frame = AnswerFrame(NextId(), text)](Conversation& host) {
      host.ReadRequest();
      const std::size_t piece = frame.size() / manner.pieces + 1;
      for (std::string_view left = frame; !left.empty(); left.remove_prefix(std::min(piece, left.size()))) {
        host.Write(left.substr(0, piece));
        if (manner.pause > 0) Sleep(manner.pause);
      }
    };
    m_meter.Start();
    const Outcome outcome = Try(act);
    CJsonObject object;
    object.CreateFrom(outcome.answer);
    const Absence absence = m_meter.Stop();
    EXPECT_FALSE(outcome.answer.empty());
    return absence;
  }

 private:
  const Apartment m_apartment{COINIT_APARTMENTTHREADED};
  ServiceMeter m_meter;
};

/// The text of an object with a list of paths, as it stands in a frame, of about `size` bytes.
std::string Paths(std::size_t size) {
  std::string text = R"({\"OpenFile\":[\"C:\\\\vault\\\\0.sldprt\")";
  while (text.size() < size) text += R"(,\"C:\\\\vault\\\\bracket.sldprt\")";
  return text + "]}";
}

class ServiceOfTheHost : public Service, public testing::WithParamInterface<Manner> {};

Absence Least(const Absence& a, const Absence& b) {
  return {std::min(a.calls, b.calls), std::min(a.paints, b.paints)};
}

TEST_P(ServiceOfTheHost, PausesLessThanAPersonNotices) {
  constexpr std::size_t kLimited = 4 * kMiB;
  // The least of some rounds counts, because other programs take the processor, too.
  constexpr int kRounds = 2, kMostRounds = 6;
  for (const std::size_t size : {kKiB, 64 * kKiB, kMiB, 4 * kMiB, 16 * kMiB, 63 * kMiB}) {
    const std::string text = Paths(size);
    Absence least = Measure(text, GetParam());
    const auto is_too_long = [&] {
      return size <= kLimited && std::max(least.calls, least.paints) >= kNoticed;
    };
    for (int round = 1; round < kRounds || (round < kMostRounds && is_too_long()); ++round) {
      least = Least(least, Measure(text, GetParam()));
    }
    std::cout << GetParam().name << ", " << size / kKiB << " KiB: no COM call for " << least.calls
              << " ms, no paint for " << least.paints << " ms\n";
    EXPECT_FALSE(is_too_long());
  }
}

constexpr Manner kManners[] = {{"Quick", 1, 0}, {"InManyPieces", 3'000, 0}, {"Slow", 20, 10}};
INSTANTIATE_TEST_SUITE_P(, ServiceOfTheHost, testing::ValuesIn(kManners), CaseName<Manner>);

/// What an answer may consist of.
struct Content {
  const char* name;
  std::string begin, again, end;  ///< as they stand in the frame
};

void PrintTo(const Content& content, std::ostream* stream) { *stream << content.name; }

class ContentOfAnAnswer : public Service, public testing::WithParamInterface<Content> {};

// Of 1 MiB, and counted in processor time, because nothing is waited for here.
TEST_P(ContentOfAnAnswer, TakesNoLongerWhateverItIs) {
  const auto& [name, begin, again, end] = GetParam();
  std::string text = begin;
  while (text.size() < kMiB) text += again;
  text += end;
  const double before = ProcessorTime();
  Measure(text, kManners[0]);
  const double took = ProcessorTime() - before;
  std::cout << name << ": " << took << " ms of the processor for 1 MiB\n";
  EXPECT_LT(took, kNoticed);
}

const Content kContents[] = {
    {"Paths", R"([\"\")", R"(,\"C:\\\\vault\\\\bracket.sldprt\")", "]"},
    {"Members", R"({\"a\":0)", R"(,\"a\":0)", "}"},
    {"WholeNumbers", "[0", ",0", "]"},
    {"Fractions", "[0", ",0.1", "]"},
    {"LargeNumbers", "[0", ",1e308", "]"},
    {"NumbersTooSmallForADouble", "[0", ",1e-400", "]"},
    {"OneNumber", "[0.", "1234567890", "]"},
    {"NestedArrays", "[0", ",[[[[]]]]", "]"},
    {"Escapes", R"([\")", R"(\\u6d4b)", R"(\"])"},
    {"Chinese", R"([\")", "\xE6\xB5\x8B", R"(\"])"},
    {"Blanks", "[", " ", "]"},
    {"Malformed", "[0", ",0", ""},
};
INSTANTIATE_TEST_SUITE_P(, ContentOfAnAnswer, testing::ValuesIn(kContents), CaseName<Content>);

}  // namespace
