// RFC 8259, "The JavaScript Object Notation (JSON) Data Interchange Format", rule by rule: what is read, what
// is refused, and what is made of that on which the standard leaves a choice. The numbers are its sections.
#include <string>
#include <string_view>
#include <vector>

#include "case_name.h"
#include "json/json_parser.h"
#include "json/json_writer.h"
#include "json_test_support.h"

using namespace std::string_literals;

namespace {

/// A text, and the same value as it is written.
struct Accepted {
  std::string text;
  std::string written;
};

struct Rule {
  const char* name;
  std::vector<Accepted> accepted;
  std::vector<std::string> refused{};
};

void PrintTo(const Rule& rule, std::ostream* stream) { *stream << rule.name; }

/// What is read of `text`, as it is written; "refused" if it is.
std::string Read(const std::string& text) {
  JsonDocument document;
  if (ParseJson(text, document)) return "refused";
  JsonBuffer buffer;
  JsonWriter writer(buffer);
  document.Accept(writer);
  return {buffer.GetString(), buffer.GetSize()};
}

std::string Repeated(std::string_view text, int count) {
  std::string all;
  for (; count > 0; --count) all += text;
  return all;
}

class Rfc8259 : public testing::TestWithParam<Rule> {};

TEST_P(Rfc8259, Holds) {
  for (const auto& [text, written] : GetParam().accepted) EXPECT_EQ(Read(text), written) << text;
  for (const std::string& text : GetParam().refused) EXPECT_EQ(Read(text), "refused") << text;
}

const Rule kGrammar[] = {
    {"Section2_ATextIsOneValue",
     {{"{}", "{}"}, {"1", "1"}},
     {"", " ", "\n", "{}{}", "1 2", "[] x", "null,", "{}]", "\"a\" \"b\""}},
    {"Section2_WhiteSpaceIsBlankTabLineFeedAndReturn",
     {{" \t\r\n[ \t\r\n1 \t\r\n, \t\r\n2 \t\r\n] \t\r\n", "[1,2]"}, {"{ \"a\" : 1 }", R"({"a":1})"}},
     {"\v1", "\f1", "\xC2\xA0" + "1"s, "[1\xE2\x80\xA8]", "\0001"s, "1\0"s, "1\xE3\x80\x80"}},
    {"Section2_ThereAreNoComments", {}, {"/**/1", "1//", "[1/*x*/]", "#\n1"}},
    {"Section3_LiteralNamesAreInLowerCase",
     {{"null", "null"}, {"true", "true"}, {"false", "false"}},
     {"Null", "TRUE", "False", "nul", "tru", "nulll", "truefalse", "undefined", "NaN", "Infinity",
      "-Infinity"}},
    {"Section3_AnyValueMayBeTheRoot",
     {{"{}", "{}"}, {"[]", "[]"}, {"\"a\"", "\"a\""}, {"0", "0"}, {"true", "true"}, {"null", "null"}}},
    {"Section4_AnObjectHasNamesAndValues",
     {{"{}", "{}"}, {R"({"a":1})", R"({"a":1})"}, {R"({"":{"":[]}})", R"({"":{"":[]}})"}},
     {"{", "}", "{\"a\"}", "{\"a\":}", "{:1}", "{1:1}", "{a:1}", "{'a':1}", "{\"a\" 1}", "{\"a\":1",
      "{null:1}", "{\"a\"::1}", "{\"a\":1]"}},
    {"Section4_CommasSeparateMembers",
     {{R"({"a":1,"b":2})", R"({"a":1,"b":2})"}},
     {R"({"a":1,})", R"({,"a":1})", R"({"a":1,,"b":2})", R"({"a":1 "b":2})", R"({"a":1;"b":2})"}},
    // The standard leaves open what equal names mean; lookup_test.cpp has that the first one counts.
    {"Section4_MembersKeepTheirOrderAndEqualNamesStay",
     {{R"({"b":1,"a":2,"b":3})", R"({"b":1,"a":2,"b":3})"}}},
    {"Section5_CommasSeparateElements",
     {{"[]", "[]"}, {"[1,[2],{}]", "[1,[2],{}]"}},
     {"[", "]", "[1,]", "[,1]", "[,]", "[1,,2]", "[1 2]", "[1", "[1}", "[1:2]", "[[]", "[]]"}},
};
INSTANTIATE_TEST_SUITE_P(Grammar, Rfc8259, testing::ValuesIn(kGrammar), CaseName<Rule>);

const Rule kNumbers[] = {
    {"Section6_AnIntegerHasNoLeadingZeroAndNoPlus",
     {{"0", "0"}, {"-0", "0"}, {"-1", "-1"}, {"10", "10"}},
     {"00", "01", "-01", "+1", "-", "--1", "- 1", "0x1", "1a", "1 000", "1_000", "\xEF\xBC\x91"}},
    {"Section6_AFractionHasDigitsOnBothSides",
     {{"0.5", "0.5"}, {"-0.0", "-0.0"}, {"1.50", "1.5"}},
     {".5", "5.", "-.5", "1..2", "1.2.3", "1,5", "."}},
    {"Section6_AnExponentHasDigits",
     {{"1e2", "100.0"}, {"1E+2", "100.0"}, {"1e-2", "0.01"}, {"0e0", "0.0"}, {"1e002", "100.0"}},
     {"1e", "1e+", "1e-", "e1", "1e1.5", "1e1e1", "1.e1", "1e++1"}},
    {"Section6_IntegersOf64BitsAreExact",
     {{"9223372036854775807", "9223372036854775807"},
      {"-9223372036854775808", "-9223372036854775808"},
      {"18446744073709551615", "18446744073709551615"}}},
    {"Section6_OtherNumbersAreTheNearestDouble",
     {{"18446744073709551616", "18446744073709553000.0"},
      {"0.1", "0.1"},
      {"0.1000000000000000055511151231257827", "0.1"},
      {"1.7976931348623157e308", "1.7976931348623157e308"},
      {"5e-324", "5e-324"},
      {"1e-400", "0.0"},
      {"0e999999999999999999999", "0.0"}}},
    {"Section6_NumbersBeyondEveryDoubleAreRefused",
     {},
     {"1e309", "-1e309", "1e999999999999999999999", Repeated("9", 310)}},
    {"Section6_ANumberEndsWhereItsGrammarEnds",
     {},
     {"[1-1]", "[1-1e309]", "[1+1]", "[1e400-1]", "[0-0e400]"}},
};
INSTANTIATE_TEST_SUITE_P(Numbers, Rfc8259, testing::ValuesIn(kNumbers), CaseName<Rule>);

const Rule kStrings[] = {
    {"Section7_QuotesAreDouble",
     {{R"("a")", R"("a")"}, {R"("'")", R"("'")"}},
     {"'a'", "\"a", "a\"", "\"", "`a`"}},
    {"Section7_ControlCharactersAreEscaped",
     {{"\"\x7F\"", "\"\x7F\""}, {R"("\u0000\u001f\u0009")", R"("\u0000\u001F\t")"}},
     {"\"\n\"", "\"\t\"", "\"\0\""s, "\"\x1F\""}},
    {"Section7_EscapesAreThese",
     {{R"("\"\\\/\b\f\n\r\t")", R"("\"\\/\b\f\n\r\t")"}},
     {R"("\a")", R"("\v")", R"("\0")", R"("\x41")", R"("\'")", R"("\U0041")", "\"\\\n\"", R"("\)", R"("\")"}},
    {"Section7_FourHexadecimalDigitsNameACharacter",
     {{R"("\u0041\u00e9\u00E9\u96f6")", "\"A\xC3\xA9\xC3\xA9\xE9\x9B\xB6\""}},
     {R"("\u")", R"("\u004")", R"("\u004g")", R"("\u 041")", R"("\u+041")", R"("\u{41}")"}},
    {"Section7_TwoSurrogatesNameACharacterBeyond16Bits",
     {{R"("\ud83d\ude00\uDBFF\uDFFF")", "\"\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF\""}}},
    // The standard calls the result unpredictable.
    {"Section8_2_LoneSurrogatesAreRefused",
     {},
     {R"("\ud83d")", R"("\ude00")", R"("\ud83dx")", R"("\ud83d\u0041")", R"("\ude00\ud83d")",
      R"("\ud83d\ud83d")", R"({"\ud83d":1})"}},
    {"Section8_3_NamesAreComparedAfterTheirEscapes", {{R"({"a\u0062":1})", R"({"ab":1})"}}},
    {"Section10_OnlyWhatMustBeIsEscaped",
     {{"\"/\xC3\xA9\xE2\x80\xA8\xF0\x9F\x98\x80\"", "\"/\xC3\xA9\xE2\x80\xA8\xF0\x9F\x98\x80\""}}},
};
INSTANTIATE_TEST_SUITE_P(Strings, Rfc8259, testing::ValuesIn(kStrings), CaseName<Rule>);

const Rule kEncodingAndLimits[] = {
    {"Section8_1_TheEncodingIsUtf8",
     {{"\"\xC2\x80\xEF\xBF\xBF\xF0\x90\x80\x80\"", "\"\xC2\x80\xEF\xBF\xBF\xF0\x90\x80\x80\""}},
     {"\"\x80\"", "\"\xC3\"", "\"\xC0\x80\"", "\"\xE0\x80\x80\"", "\"\xED\xA0\x80\"", "\"\xF4\x90\x80\x80\"",
      "\"\xFF\"", "\"\xE9\"", "{\"\xFC\":1}", "[1]\xFF", "1\0"s, "\0001"s}},
    // A parser may pass over one; ours does in files, which create_from_file_test.cpp has.
    {"Section8_1_AByteOrderMarkInATextIsRefused", {}, {"\xEF\xBB\xBF{}", "{}\xEF\xBB\xBF", "\xFE\xFF"}},
    // A parser may set a limit.
    {"Section9_OneThousandLevelsAreRead",
     {{Repeated("[", 1000) + Repeated("]", 1000), Repeated("[", 1000) + Repeated("]", 1000)},
      {Repeated("{\"\":", 999) + "[]" + Repeated("}", 999),
       Repeated("{\"\":", 999) + "[]" + Repeated("}", 999)}},
     {Repeated("[", 1001) + Repeated("]", 1001), Repeated("[", 1'000'000), Repeated("{\"\":", 1'000'000)}},
    {"Section9_NamesAndStringsHaveAnyLength",
     {{"{\"" + Repeated("n", 100'000) + "\":\"" + Repeated("v", 100'000) + "\"}",
       "{\"" + Repeated("n", 100'000) + "\":\"" + Repeated("v", 100'000) + "\"}"}}},
};
INSTANTIATE_TEST_SUITE_P(EncodingAndLimits, Rfc8259, testing::ValuesIn(kEncodingAndLimits), CaseName<Rule>);

}  // namespace
