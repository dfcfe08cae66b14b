#include <iconv.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "base/utf8.h"
#include "promise.h"
#include "targets.h"

namespace fuzz {
namespace {

/// A conversion of the C library.
class Conversion {
 public:
  Conversion(const char* to, const char* from) : m_conversion(iconv_open(to, from)) {
    Require(m_conversion != reinterpret_cast<iconv_t>(-1), "iconv knows UTF-8 and UTF-16");
  }
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;
  ~Conversion() { iconv_close(m_conversion); }

  /// `text` converted. Of what iconv refuses, each unit of `unit` bytes becomes `replacement`;
  /// `first_refused` is its place.
  std::string Convert(std::string text, std::size_t unit, std::string_view replacement,
                      std::size_t& first_refused) const {
    constexpr std::size_t kMostBytesForOne = 4;
    std::string converted;
    std::string room(text.size() * kMostBytesForOne + kMostBytesForOne, '\0');
    first_refused = std::string::npos;
    char* from = text.data();
    for (std::size_t left = text.size(); left > 0;) {
      char* to = room.data();
      std::size_t free = room.size();
      const std::size_t result = iconv(m_conversion, &from, &left, &to, &free);
      const bool is_refused = result == static_cast<std::size_t>(-1);
      Require(!is_refused || errno == EILSEQ || errno == EINVAL, "iconv refuses only invalid text");
      converted.append(room.data(), to);
      if (!is_refused) continue;
      if (first_refused == std::string::npos) first_refused = static_cast<std::size_t>(from - text.data());
      converted += replacement;
      from += unit;
      left -= unit;
      iconv(m_conversion, nullptr, nullptr, nullptr, nullptr);
    }
    return converted;
  }

 private:
  iconv_t m_conversion;
};

std::string BytesOf(std::u16string_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

std::u16string UnitsOf(std::string_view bytes) {
  std::u16string units(bytes.size() / sizeof(char16_t), u'\0');
  if (!units.empty()) std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
  return units;
}

void TryAsUtf8(std::string_view bytes) {
  static const Conversion conversion("UTF-16LE", "UTF-8");
  std::size_t first_refused = 0;
  const std::string expected = conversion.Convert(std::string(bytes), 1, BytesOf(u"\uFFFD"), first_refused);
  const std::u16string decoded = utf8::Decode<char16_t>(bytes);
  Require(BytesOf(decoded) == expected, "UTF-8 becomes UTF-16 as iconv converts it");
  Require(utf8::FindInvalid(bytes) == first_refused, "the first invalid byte is the one that iconv refuses");
  const std::wstring wide = utf8::Decode<wchar_t>(bytes);
  Require(utf8::Encode(std::wstring_view(wide)) == utf8::Encode(std::u16string_view(decoded)),
          "wide characters say the same as UTF-16");
  if (first_refused == std::string::npos) {
    Require(utf8::Encode(std::u16string_view(decoded)) == bytes, "valid UTF-8 comes back");
  }
}

void TryAsUtf16(std::string_view bytes) {
  static const Conversion conversion("UTF-8", "UTF-16LE");
  const std::u16string units = UnitsOf(bytes);
  std::size_t first_refused = 0;
  const std::string expected =
      conversion.Convert(BytesOf(units), sizeof(char16_t), "\xEF\xBF\xBD", first_refused);
  Require(utf8::Encode(std::u16string_view(units)) == expected, "UTF-16 becomes UTF-8 as iconv converts it");
  if (first_refused == std::string::npos) {
    Require(utf8::Decode<char16_t>(expected) == units, "valid UTF-16 comes back");
  }
  const std::wstring as_characters(units.begin(), units.end());  // surrogates side by side, as in no UTF-32
  Require(utf8::Encode(std::wstring_view(as_characters)) == expected, "surrogates in wide characters pair");
}

}  // namespace

void TryText(std::string_view bytes) {
  TryAsUtf8(bytes);
  TryAsUtf16(bytes);
}

}  // namespace fuzz
