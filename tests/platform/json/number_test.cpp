// Numbers that are not integers, above all those at the edges of double.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "json_test_support.h"

namespace {

/// The number as the only element of an array; nothing if it is refused.
std::optional<double> Read(const std::string& number) {
  CJsonObject json;
  if (!json.CreateFrom(L"[" + CStringHelper::UTF8ToUnicode(number) + L"]")) return std::nullopt;
  const CJsonObject::Value& value = (*json.Share())[0];
  EXPECT_TRUE(value.IsNumber());
  return value.GetDouble();
}

std::string Zeros(std::size_t count) { return std::string(count, '0'); }

TEST(Numbers, OfZeroWithAnyExponentAreZero) {
  for (const std::string number : {"0e309", "0E+400", "0.0e309", "0e2147483647", "0e99999999999999999999",
                                   "0e-400", "0e-99999999999999999999", "0.000e1000", "-0e309", "-0.0E400"}) {
    EXPECT_EQ(Read(number), 0.0) << number;
    EXPECT_EQ(std::signbit(*Read(number)), number[0] == '-') << number;
  }
  EXPECT_EQ(Read("0." + Zeros(1000) + "e5000"), 0.0);
}

TEST(Numbers, OfManyDigitsAreTheNearestDouble) {
  EXPECT_EQ(Read("1" + Zeros(400) + "e-400"), 1.0);
  EXPECT_EQ(Read("-1" + Zeros(400) + "e-399"), -10.0);
  EXPECT_EQ(Read(std::string(310, '3') + "e-310"), 1.0 / 3);
  EXPECT_EQ(Read("25" + Zeros(700'000) + "e-700001"), 2.5);
  EXPECT_EQ(Read("0." + Zeros(700'000) + "25e700002"), 25.0);
  EXPECT_EQ(Read("1" + Zeros(308)), 1e308);
  EXPECT_EQ(Read("1." + Zeros(1000) + "1"), 1.0);
}

TEST(Numbers, AtExactlyHalfBetweenTwoDoublesAreDecidedByTheirLastDigit) {
  // 1 + 2^-53, between 1 and 1 + 2^-52.
  const std::string half = "1.00000000000000011102230246251565404236316680908203125";
  EXPECT_EQ(Read(half), 1.0);
  EXPECT_EQ(Read(half + Zeros(2000)), 1.0);
  EXPECT_EQ(Read(half + Zeros(2000) + "1"), std::nextafter(1.0, 2.0));
}

TEST(Numbers, ThatRoundToTheLargestDoubleAreAccepted) {
  constexpr double kLargest = 1.7976931348623157e308;
  EXPECT_EQ(Read("1.7976931348623158079e308"), kLargest);
  EXPECT_EQ(Read("-17976931348623158079e289"), -kLargest);
  EXPECT_EQ(Read("0.00017976931348623158079e312"), kLargest);
  EXPECT_EQ(Read("17976931348623158079" + Zeros(400) + "e-111"), kLargest);
}

TEST(Numbers, ThatRoundPastTheLargestDoubleAreRefused) {
  for (const char* number :
       {"1.7976931348623158080e308", "-1.7976931348623158080e308", "17976931348623158080e289", "1.8e308",
        "1e309", "1e400", "1e2147483648", "1e99999999999999999999", "0.0001e99999999999999999999"}) {
    EXPECT_EQ(Read(number), std::nullopt) << number;
  }
  EXPECT_EQ(Read("1" + Zeros(309)), std::nullopt);
  EXPECT_EQ(Read("17976931348623158080" + Zeros(400) + "e-111"), std::nullopt);
  EXPECT_EQ(Read("0." + Zeros(400) + "1e710"), std::nullopt);
}

TEST(Numbers, ThatRoundToZeroAreZero) {
  for (const char* number : {"1e-400", "2.4703282292062327e-324", "1e-99999999999999999999",
                             // RapidJSON's exponent overflows at these.
                             "0.0000000001e-2147483639", "0.00000000000001e-2147483647"}) {
    EXPECT_EQ(Read(number), 0.0) << number;
  }
  EXPECT_EQ(Read("2.4703282292062328e-324"), 5e-324);
}

TEST(Numbers, InStringsAreUnchanged) {
  const std::wstring text = LR"({"0e309":"0e309 \" 0e309","a":["1e500"],"\\":"0e309"})";
  EXPECT_EQ(Parse(text)->ToJson(), text);
}

TEST(Numbers, WithLargeExponentsDoNotHideFaults) {
  for (const wchar_t* text :
       {L"[0e309 0]", L"[0e309x]", L"[0e309.5]", L"[00e309]", L"[+0e309]", L"[.0e309]", L"[0e309,]",
        L"[0.e309]", L"[0e309", L"[0e+]", L"[--0e309]", L"[1e5000,0e309]", L"[5-1e309]"}) {
    EXPECT_FALSE(CJsonObject().CreateFrom(text)) << testing::PrintToString(std::wstring(text));
  }
  EXPECT_FALSE(CJsonObject().CreateFrom(L"[" + std::wstring(1'000'000, L'1') + L".]"));
  EXPECT_FALSE(CJsonObject().CreateFrom(L"[5-" + std::wstring(1'000, L'1') + L"]"));
}

/// Deterministic numbers, most of them near an edge of double.
class Sample {
 public:
  std::string Next() {
    std::string digits;
    long power = 0;  // of 0.DIGITS
    switch (Below(8)) {
      case 0:  // anything
        digits = Digits(1 + Below(40));
        power = static_cast<long>(Below(700)) - 350;
        break;
      case 1:  // at the largest double
        digits = Pick({"17976931348623157", "17976931348623158", "179769313486231580793",
                       "1797693134862315807", "179769313486231570814527423731704356798070567525844996"}) +
                 Digits(Below(30));
        power = 309;
        break;
      case 2:  // at the smallest double and half of it
        digits = Pick({"494065645841246544", "247032822920623272", "24703282292062327208",
                       "24703282292062328", "741098468761869816"}) +
                 Digits(Below(30));
        power = -323;
        break;
      case 3:  // at the smallest double of full precision
        digits = Pick({"22250738585072014", "22250738585072011", "2225073858507201136"}) + Digits(Below(30));
        power = -307;
        break;
      case 4:  // more digits than any double has
        digits = Digits(300 + Below(700));
        power = static_cast<long>(Below(700)) - 350;
        break;
      case 5:  // exactly between two doubles, and next to that
        std::tie(digits, power) = Halfway();
        break;
      case 6:  // zero
        digits = Zeros(1 + Below(400));
        power = static_cast<long>(Below(4000)) - 2000;
        break;
      default:  // integers around 64 bits
        digits =
            Pick({"1844674407370955161", "922337203685477580", "9007199254740993", "1"}) + Digits(Below(4));
        power = static_cast<long>(digits.size());
    }
    return Written(digits, power);
  }

 private:
  std::size_t Below(std::size_t end) { return m_random() % end; }
  std::string Pick(std::initializer_list<const char*> texts) { return texts.begin()[Below(texts.size())]; }

  std::string Digits(std::size_t count) {
    std::string digits(count, '0');
    const bool only_zeros_and_nines = Below(4) == 0;
    for (char& digit : digits) {
      digit = static_cast<char>('0' + (only_zeros_and_nines ? 9 * Below(2) : Below(10)));
    }
    return digits;
  }

  std::pair<std::string, long> Halfway() {
    const auto exponent = static_cast<int>(Below(2090)) - 1070;
    const double low = std::ldexp(1.0 + static_cast<double>(Below(1u << 20)) / (1u << 20), exponent);
    if (low == 0 || std::isinf(low)) return {"1", 0};
    const long double half = (static_cast<long double>(low) + std::nextafter(low, 2 * low)) / 2;
    std::string text(900, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.770Le", half)));
    const long power = std::strtol(text.c_str() + text.find('e') + 1, nullptr, 10) + 1;
    std::string digits = text[0] + text.substr(2, 770);
    if (Below(3) == 0) digits += Zeros(Below(100)) + "1";
    if (Below(3) == 0) digits.resize(20 + Below(300));
    return {digits, power};
  }

  /// 0.DIGITS times ten to `power`, with the point somewhere and the exponent that this needs.
  std::string Written(std::string digits, long power) {
    const std::string sign = Below(4) == 0 ? "-" : "";
    const std::size_t point = Below(4) == 0 ? 1 : Below(digits.size() + 1);
    std::string whole = digits.substr(0, point);
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    const std::string fraction = digits.substr(point);
    const long exponent = power - static_cast<long>(point);
    std::string text = sign + (whole.empty() ? "0" : whole);
    if (!fraction.empty()) text += "." + fraction;
    if (exponent != 0 || Below(2) == 0) {
      text += Pick({"e", "E"}) + (exponent < 0 ? "-" : Pick({"", "+"})) + Pick({"", "", "0", "000"}) +
              std::to_string(std::abs(exponent));
    }
    return text;
  }

  std::mt19937_64 m_random{20'000};
};

/// How many numbers are compared; for a longer run, set the environment variable JSON_NUMBERS.
long SampleSize() {
  const char* size = std::getenv("JSON_NUMBERS");
  return size ? std::strtol(size, nullptr, 10) : 20'000;
}

// The C library reads and rounds the numbers exactly.
TEST(Numbers, AreReadAsTheCLibraryReadsThem) {
  Sample sample;
  long refused = 0, zeros = 0;
  for (long i = 0; i < SampleSize() && !HasFailure(); ++i) {
    const std::string number = sample.Next();
    const double expected = std::strtod(number.c_str(), nullptr);
    const std::optional<double> read = Read(number);
    if (std::isinf(expected)) {
      ++refused;
      EXPECT_EQ(read, std::nullopt) << number;
    } else {
      if (expected == 0) ++zeros;
      EXPECT_EQ(read, expected) << number;
    }
  }
  EXPECT_GT(refused, SampleSize() / 40) << "the sample is not near the largest double";
  EXPECT_GT(zeros, SampleSize() / 40) << "the sample is not near zero";
}

}  // namespace
