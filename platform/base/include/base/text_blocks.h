/// @file Sixteen characters of a text at once. Every x86-64 has the instructions (SSE2).
#pragma once

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstddef>

namespace text_blocks {

/// How many characters the functions below read and write.
inline constexpr std::size_t kBlock = 16;

inline __m128i LoadBlock(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
inline void StoreBlock(void* to, __m128i bytes) { _mm_storeu_si128(static_cast<__m128i*>(to), bytes); }

/// Writes kBlock bytes as units of 16 bits. @return how many of them, from the first, are ASCII and so right.
inline std::size_t WidenAscii(const char* from, void* to) {
  const __m128i bytes = LoadBlock(from);
  StoreBlock(to, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
  StoreBlock(static_cast<char*>(to) + kBlock, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
  const auto others = static_cast<unsigned>(_mm_movemask_epi8(bytes));
  return static_cast<std::size_t>(std::countr_zero(others | 1u << kBlock));
}

/// Writes kBlock units of 16 bits as bytes. @return how many of them, from the first, are ASCII and so right.
inline std::size_t NarrowAscii(const void* from, char* to) {
  const __m128i first = LoadBlock(from);
  const __m128i second = LoadBlock(static_cast<const char*>(from) + kBlock);
  StoreBlock(to, _mm_packus_epi16(first, second));
  const __m128i beyond = _mm_set1_epi16(static_cast<short>(0xFF80));
  const auto is_ascii = [beyond](__m128i units) {
    return _mm_cmpeq_epi16(_mm_and_si128(units, beyond), _mm_setzero_si128());
  };
  const int ascii = _mm_movemask_epi8(_mm_packs_epi16(is_ascii(first), is_ascii(second)));
  return static_cast<std::size_t>(std::countr_one(static_cast<unsigned>(ascii)));
}

/// How many of the first kBlock bytes, from the first, are ASCII.
inline std::size_t CountAscii(const char* from) {
  const auto others = static_cast<unsigned>(_mm_movemask_epi8(LoadBlock(from)));
  return static_cast<std::size_t>(std::countr_zero(others | 1u << kBlock));
}

/// The sum of sixteen counters of eight bits.
inline std::size_t SumOfBytes(__m128i counters) {
  const __m128i halves = _mm_sad_epu8(counters, _mm_setzero_si128());
  return static_cast<std::size_t>(_mm_cvtsi128_si64(halves)) +
         static_cast<std::size_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(halves, halves)));
}

/// Adds up what `count` says of each block of `text`. It gets a block's address and a vector of sixteen
/// counters of eight bits, to each of which it adds two at most.
template <class Count>
std::size_t SumOverBlocks(const char* text, std::size_t blocks, Count count) {
  constexpr std::size_t kBlocksPerCounter = 255 / 2;
  std::size_t sum = 0;
  while (blocks > 0) {
    __m128i counters = _mm_setzero_si128();
    const std::size_t round = std::min(blocks, kBlocksPerCounter);
    for (std::size_t block = 0; block < round; ++block, text += kBlock) counters = count(text, counters);
    sum += SumOfBytes(counters);
    blocks -= round;
  }
  return sum;
}

/// The first place from `from` on that has the character `a` or `b`; `end` if there is none.
inline const char* FindEither(const char* from, const char* end, char a, char b) {
  const __m128i all_a = _mm_set1_epi8(a);
  const __m128i all_b = _mm_set1_epi8(b);
  for (; static_cast<std::size_t>(end - from) >= kBlock; from += kBlock) {
    const __m128i bytes = LoadBlock(from);
    const __m128i either = _mm_or_si128(_mm_cmpeq_epi8(bytes, all_a), _mm_cmpeq_epi8(bytes, all_b));
    if (const auto found = static_cast<unsigned>(_mm_movemask_epi8(either)))
      return from + std::countr_zero(found);
  }
  while (from != end && *from != a && *from != b) ++from;
  return from;
}

}  // namespace text_blocks
