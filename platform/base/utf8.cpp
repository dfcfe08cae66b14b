#include "base/utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/text_blocks.h"

namespace utf8 {
namespace {

using namespace text_blocks;

constexpr char32_t kLastCodePoint = 0x10FFFF;

// So many ASCII characters in a row, and blocks are tried again: in mixed text a block that fails costs more
// than the characters that it takes.
constexpr std::size_t kShortRun = 2;

/// The first code point of a text that is not empty, and how many units it takes. A length of 0 says that the
/// text begins with a byte that is not part of a valid sequence.
struct Decoded {
  char32_t code_point;
  std::size_t length;
};

template <class Unit>
Decoded DecodeWide(const Unit* from, const Unit* end) {
  const auto unit = static_cast<char32_t>(*from);
  if (IsHighSurrogate(unit) && end - from > 1) {
    const auto next = static_cast<char32_t>(from[1]);
    if (IsLowSurrogate(next)) return {Combine(unit, next), 2};
  }
  const bool valid = !IsHighSurrogate(unit) && !IsLowSurrogate(unit) && unit <= kLastCodePoint;
  return {valid ? unit : kReplacement, 1};
}

[[gnu::always_inline]] inline Decoded DecodeBytes(const char* from, const char* end) {
  constexpr Decoded kInvalid{kReplacement, 0};
  const auto byte = [from](std::size_t index) { return static_cast<unsigned char>(from[index]); };
  const auto continues = [&byte](std::size_t index) { return (byte(index) & 0xC0) == 0x80; };
  const auto bits = [&byte](std::size_t index) { return static_cast<char32_t>(byte(index) & 0x3F); };
  const auto left = static_cast<std::size_t>(end - from);
  const char32_t lead = byte(0);
  if (lead < 0x80) return {lead, 1};
  if (left >= 4) {  // most Chinese: three bytes, looked at together
    std::uint32_t four;
    std::memcpy(&four, from, sizeof four);
    if ((four & 0x00C0C0F0) == 0x008080E0) {
      const char32_t code_point = (four & 0xF) << 12 | (four >> 2 & 0xFC0) | (four >> 16 & 0x3F);
      const bool valid = code_point >= 0x800 && !IsHighSurrogate(code_point) && !IsLowSurrogate(code_point);
      return valid ? Decoded{code_point, 3} : kInvalid;
    }
  }
  if (lead < 0xE0) {
    if (lead < 0xC2 || left < 2 || !continues(1)) return kInvalid;
    return {(lead & 0x1F) << 6 | bits(1), 2};
  }
  if (lead < 0xF0) {
    if (left < 3 || !continues(1) || !continues(2)) return kInvalid;
    const char32_t code_point = (lead & 0xF) << 12 | bits(1) << 6 | bits(2);
    const bool valid = code_point >= 0x800 && (code_point < 0xD800 || code_point > 0xDFFF);
    return valid ? Decoded{code_point, 3} : kInvalid;
  }
  if (lead > 0xF4 || left < 4 || !continues(1) || !continues(2) || !continues(3)) return kInvalid;
  const char32_t code_point = (lead & 7) << 18 | bits(1) << 12 | bits(2) << 6 | bits(3);
  return code_point >= 0x10000 && code_point <= kLastCodePoint ? Decoded{code_point, 4} : kInvalid;
}

[[gnu::always_inline]] inline char* WriteInline(char32_t code_point, char* to) {
  const auto put = [&to](char32_t byte) { *to++ = static_cast<char>(byte); };
  const auto put_continuation = [&](int shift) { put(0x80 | (code_point >> shift & 0x3F)); };
  if (code_point < 0x80) {
    put(code_point);
  } else if (code_point < 0x800) {
    put(0xC0 | code_point >> 6);
    put_continuation(0);
  } else if (code_point < 0x10000) {
    put(0xE0 | code_point >> 12);
    put_continuation(6);
    put_continuation(0);
  } else {
    put(0xF0 | code_point >> 18);
    put_continuation(12);
    put_continuation(6);
    put_continuation(0);
  }
  return to;
}

template <class Unit>
Unit* Put(char32_t code_point, Unit* to) {
  if (sizeof(Unit) == 2 && code_point >= 0x10000) {
    *to++ = static_cast<Unit>(0xD800 + ((code_point - 0x10000) >> 10));
    *to++ = static_cast<Unit>(0xDC00 + ((code_point - 0x10000) & 0x3FF));
  } else {
    *to++ = static_cast<Unit>(code_point);
  }
  return to;
}

/// The number of bytes of `text` as UTF-8; more if it has surrogates.
template <class Unit>
std::size_t EncodedLimit(std::basic_string_view<Unit> text) {
  const Unit* from = text.data();
  const Unit* const end = from + text.size();
  std::size_t size = 0;
  if constexpr (sizeof(Unit) == 2) {
    const __m128i last_of_one = _mm_set1_epi16(0x7F);
    const __m128i last_of_two = _mm_set1_epi16(0x7FF);
    const std::size_t blocks = text.size() / (kBlock / 2);
    // Counts the units that take one byte in one half of the counters, and those that take at most two in
    // both.
    const std::size_t saved =
        SumOverBlocks(reinterpret_cast<const char*>(from), blocks, [&](const char* block, __m128i counters) {
          const __m128i units = LoadBlock(block);
          const __m128i one = _mm_cmpeq_epi16(_mm_subs_epu16(units, last_of_one), _mm_setzero_si128());
          const __m128i two = _mm_cmpeq_epi16(_mm_subs_epu16(units, last_of_two), _mm_setzero_si128());
          return _mm_sub_epi8(counters, _mm_packs_epi16(one, two));
        });
    from += blocks * (kBlock / 2);
    size = 3 * blocks * (kBlock / 2) - saved;
  }
  for (; from != end; ++from) {
    const auto unit = static_cast<char32_t>(*from);
    size += 1u + (unit >= 0x80) + (unit >= 0x800) + (unit >= 0x10000);
  }
  return size;
}

/// The number of units of `text` if it is valid.
template <class Unit>
std::size_t DecodedSize(std::string_view text) {
  const std::size_t blocks = text.size() / kBlock;
  std::size_t size = SumOverBlocks(text.data(), blocks, [](const char* block, __m128i counters) {
    const __m128i bytes = LoadBlock(block);
    const __m128i begins = _mm_cmpgt_epi8(bytes, _mm_set1_epi8(static_cast<char>(0xBF)));
    counters = _mm_sub_epi8(counters, begins);
    if constexpr (sizeof(Unit) != 2) return counters;
    const __m128i is_pair =
        _mm_cmpeq_epi8(_mm_max_epu8(bytes, _mm_set1_epi8(static_cast<char>(0xF0))), bytes);
    return _mm_sub_epi8(counters, is_pair);
  });
  for (const char character : text.substr(blocks * kBlock)) {
    const auto byte = static_cast<unsigned char>(character);
    size += ((byte & 0xC0) != 0x80) + (sizeof(Unit) == 2 && byte >= 0xF0);
  }
  return size;
}

}  // namespace

char* Write(char32_t code_point, char* to) noexcept { return WriteInline(code_point, to); }

template <class Unit>
std::size_t EncodeTo(std::basic_string_view<Unit> text, char* to) {
  const char* const begin = to;
  const Unit* from = text.data();
  const Unit* const end = from + text.size();
  while (from != end) {
    if constexpr (sizeof(Unit) == 2) {
      // As long as kBlock units are left, there is room for as many bytes.
      while (static_cast<std::size_t>(end - from) >= kBlock) {
        const std::size_t ascii = NarrowAscii(from, to);
        from += ascii;
        to += ascii;
        if (ascii < kBlock) break;
      }
    }
    for (std::size_t ascii_run = 0; from != end && ascii_run < kShortRun;) {
      const auto unit = static_cast<char32_t>(*from);
      ascii_run = unit < 0x80 ? ascii_run + 1 : 0;
      if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit) && unit <= 0xFFFF) {
        to = WriteInline(unit, to);
        ++from;
      } else {
        const auto [code_point, length] = DecodeWide(from, end);
        to = WriteInline(code_point, to);
        from += length;
      }
    }
  }
  return static_cast<std::size_t>(to - begin);
}

template <class Unit>
std::string Encode(std::basic_string_view<Unit> text) {
  std::string bytes(EncodedLimit(text), '\0');
  bytes.resize(EncodeTo(text, bytes.data()));
  return bytes;
}

template <class Unit>
std::basic_string<Unit> Decode(std::string_view text) {
  std::basic_string<Unit> wide(DecodedSize<Unit>(text), Unit{});
  const char* from = text.data();
  const char* const end = from + text.size();
  Unit* to = wide.data();
  const auto left = [&] { return static_cast<std::size_t>(end - from); };
  const auto room = [&] { return static_cast<std::size_t>(wide.data() + wide.size() - to); };
  bool is_valid = true;
  while (from != end) {
    if constexpr (sizeof(Unit) == 2) {
      while (left() >= kBlock && room() >= kBlock) {
        const std::size_t ascii = WidenAscii(from, to);
        from += ascii;
        to += ascii;
        if (ascii < kBlock) break;
      }
    }
    for (std::size_t ascii_run = 0; from != end && ascii_run < kShortRun;) {
      const auto [code_point, length] = DecodeBytes(from, end);
      if (length == 0 && is_valid) {  // from here on, each byte may become a unit
        is_valid = false;
        const auto written = static_cast<std::size_t>(to - wide.data());
        wide.resize(written + left());
        to = wide.data() + written;
      }
      ascii_run = code_point < 0x80 ? ascii_run + 1 : 0;
      to = Put(code_point, to);
      from += length == 0 ? 1 : length;
    }
  }
  wide.resize(static_cast<std::size_t>(to - wide.data()));
  return wide;
}

std::size_t FindInvalid(std::string_view text) {
  const char* from = text.data();
  const char* const end = from + text.size();
  while (from != end) {
    while (static_cast<std::size_t>(end - from) >= kBlock) {
      const std::size_t ascii = CountAscii(from);
      from += ascii;
      if (ascii < kBlock) break;
    }
    for (std::size_t ascii_run = 0; from != end && ascii_run < kShortRun;) {
      const auto [code_point, length] = DecodeBytes(from, end);
      if (length == 0) return static_cast<std::size_t>(from - text.data());
      ascii_run = code_point < 0x80 ? ascii_run + 1 : 0;
      from += length;
    }
  }
  return std::string_view::npos;
}

template std::size_t EncodeTo(std::wstring_view text, char* to);
template std::size_t EncodeTo(std::u16string_view text, char* to);
template std::string Encode(std::wstring_view text);
template std::string Encode(std::u16string_view text);
template std::wstring Decode(std::string_view text);
template std::u16string Decode(std::string_view text);

}  // namespace utf8
