#include "json_scan.h"

#include <charconv>

#include "base/text_blocks.h"
#include "base/utf8.h"

namespace {

constexpr std::size_t kEscapeLength = 6;  // \uXXXX

/// The unit of the escape \uXXXX at `from`; 0 if there is none.
unsigned EscapedUnit(const char* from, const char* end) {
  unsigned unit = 0;
  if (static_cast<std::size_t>(end - from) < kEscapeLength || from[0] != '\\' || from[1] != 'u') return 0;
  const auto [stop, error] = std::from_chars(from + 2, from + kEscapeLength, unit, 16);
  return stop == from + kEscapeLength ? unit : 0;
}

class Scanner {
 public:
  explicit Scanner(std::string_view text) : m_begin(text.data()), m_end(m_begin + text.size()) {}

  JsonScan Scan() {
    for (const char* at = m_begin; at != m_end;) {
      if (*at == '"') {
        at = SkipString(at + 1);
      } else if (IsDigit(*at)) {
        at = SkipNumber(at);
      } else {
        ++at;
      }
    }
    return m_found;
  }

 private:
  static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

  /// @return the end of the string whose characters begin at `at`.
  const char* SkipString(const char* at) {
    for (;;) {
      at = text_blocks::FindEither(at, m_end, '"', '\\');
      if (at == m_end) return at;
      if (*at == '"') return at + 1;
      at = SkipEscape(at);
    }
  }

  const char* SkipEscape(const char* at) {
    const unsigned unit = EscapedUnit(at, m_end);
    if (utf8::IsLowSurrogate(unit) && m_found.lone_low_surrogate == std::string_view::npos) {
      m_found.lone_low_surrogate = static_cast<std::size_t>(at - m_begin);
    }
    const bool is_pair =
        utf8::IsHighSurrogate(unit) && utf8::IsLowSurrogate(EscapedUnit(at + kEscapeLength, m_end));
    const std::size_t length = is_pair ? 2 * kEscapeLength : 2;
    return static_cast<std::size_t>(m_end - at) < length ? m_end : at + length;
  }

  /// @return the end of the number whose digits begin at `at`.
  const char* SkipNumber(const char* at) {
    const char* const begin = at;
    const char* last_mark = at;  // before the digits that may be those of an exponent
    bool has_exponent = false;
    for (; at != m_end; ++at) {
      if (IsDigit(*at)) continue;
      if (*at == 'e' || *at == 'E') {
        has_exponent = true;
      } else if (*at != '.' && *at != '+' && *at != '-') {
        break;
      }
      last_mark = at;
    }
    if (static_cast<std::size_t>(at - begin) >= kManyCharacters ||
        (has_exponent && static_cast<std::size_t>(at - last_mark) > kLargeExponentDigits)) {
      m_found.has_extreme_number = true;
    }
    return at;
  }

  const char* m_begin;
  const char* m_end;
  JsonScan m_found;
};

}  // namespace

JsonScan ScanJson(std::string_view text) { return Scanner(text).Scan(); }
