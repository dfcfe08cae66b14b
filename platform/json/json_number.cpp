#include "json_number.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>

#include "json_scan.h"

namespace {

// Enough to decide between two neighbouring doubles, if the last one is not zero for what was cut off.
constexpr std::size_t kSignificantDigits = 800;

// Beyond these powers of ten every number rounds to infinity or to zero.
constexpr std::int64_t kLargestPower = 400;
constexpr std::int64_t kSmallestPower = -400;
// More than the length of any text, so that digits do not outweigh an exponent of this size.
constexpr std::int64_t kUnboundedExponent = std::int64_t{1} << 60;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t CountDigits(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::find_if_not(text, IsDigit) - text.begin());
}

/// The parts of a number.
struct Number {
  std::string_view all;
  bool is_negative = false;
  std::string_view whole;
  std::string_view fraction;
  bool has_negative_exponent = false;
  std::string_view exponent;  ///< its digits
};

/// The number at the start of `text`; nothing if there is none that is well-formed.
std::optional<Number> ReadNumber(std::string_view text) {
  Number number;
  std::string_view rest = text;
  const auto skip = [&rest](std::string_view characters) {
    if (rest.empty() || characters.find(rest.front()) == std::string_view::npos) return '\0';
    const char skipped = rest.front();
    rest.remove_prefix(1);
    return skipped;
  };
  const auto take_digits = [&rest](std::string_view& digits) {
    digits = rest.substr(0, CountDigits(rest));
    rest.remove_prefix(digits.size());
    return !digits.empty();
  };

  number.is_negative = skip("-") != '\0';
  if (skip("0")) {
    number.whole = "0";
  } else if (!take_digits(number.whole)) {
    return std::nullopt;
  }
  if (skip(".") && !take_digits(number.fraction)) return std::nullopt;
  if (skip("eE")) {
    number.has_negative_exponent = skip("+-") == '-';
    if (!take_digits(number.exponent)) return std::nullopt;
  }
  number.all = text.substr(0, text.size() - rest.size());
  return number;
}

std::int64_t Exponent(const Number& number) {
  std::int64_t exponent = 0;
  const char* const end = number.exponent.data() + number.exponent.size();
  const auto result = std::from_chars(number.exponent.data(), end, exponent);
  const bool is_too_large = result.ec == std::errc::result_out_of_range || exponent > kUnboundedExponent;
  if (is_too_large) exponent = kUnboundedExponent;
  return number.has_negative_exponent ? -exponent : exponent;
}

/// The value of a number of any length, by way of one with few digits and a small exponent.
std::optional<double> NearestDoubleOf(const Number& number) {
  const double zero = number.is_negative ? -0.0 : 0.0;
  std::string digits;
  std::int64_t power = Exponent(number) + static_cast<std::int64_t>(number.whole.size());  // of 0.DIGITS
  bool is_cut = false;
  for (const std::string_view part : {number.whole, number.fraction}) {
    for (const char digit : part) {
      if (digits.empty() && digit == '0') {
        --power;
      } else if (digits.size() < kSignificantDigits) {
        digits += digit;
      } else {
        is_cut = is_cut || digit != '0';
      }
    }
  }
  if (digits.empty() || power < kSmallestPower) return zero;
  if (power > kLargestPower) return std::nullopt;

  const std::string text =
      (number.is_negative ? "-0." : "0.") + digits + (is_cut ? "1" : "") + "e" + std::to_string(power);
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc::result_out_of_range) return value;
  if (power < 0) return zero;
  return std::nullopt;
}

/// The end of the string whose quote is at `place`.
std::size_t SkipString(std::string_view text, std::size_t place) {
  for (++place; place < text.size() && text[place] != '"'; ++place) {
    if (text[place] == '\\') ++place;
  }
  return place + 1;
}

}  // namespace

std::optional<double> NearestDouble(std::string_view number) {
  if (number.size() <= kManyCharacters) {
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc()) return value;
  }
  const std::optional<Number> parts = ReadNumber(number);
  return parts ? NearestDoubleOf(*parts) : std::nullopt;
}

std::optional<std::string> WithoutExtremeNumbers(std::string_view text) {
  std::optional<std::string> changed;
  for (std::size_t place = 0; place < text.size();) {
    const char c = text[place];
    if (c == '"') {
      place = SkipString(text, place);
    } else if (c == '-' || IsDigit(c)) {
      const std::optional<Number> number = ReadNumber(text.substr(place));
      if (!number) break;  // the parser reports the fault
      const std::size_t length = number->all.size();
      if (length > kManyCharacters || number->exponent.size() >= kLargeExponentDigits) {
        if (!changed) changed.emplace(text);
        // The sign stays: without it, digits before it, which are a fault, would become digits of this
        // number.
        const std::size_t zero = place + (number->is_negative ? 1 : 0);
        changed->replace(zero, place + length - zero, place + length - zero, '0');
        (*changed)[zero + 1] = 'e';
      }
      place += length;
    } else {
      ++place;
    }
  }
  return changed;
}
