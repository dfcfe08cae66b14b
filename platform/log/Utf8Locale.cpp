#include "Utf8Locale.h"

#include <log4cplus/spi/factory.h>

#include <cwchar>
#include <memory>

namespace {
constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Writes `code_point` at `to`. @return the end of what was written.
char* Encode(char32_t code_point, char* to) {
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

/// Turns UTF-16 into UTF-8. The state is a high surrogate that waits for its other half, or 0.
class Utf8Encoder : public std::codecvt<wchar_t, char, std::mbstate_t> {
 protected:
  result do_out(state_type& state, const wchar_t* from, const wchar_t* from_end, const wchar_t*& from_next,
                char* to, char* to_end, char*& to_next) const override {
    for (from_next = from, to_next = to; from_next != from_end; ++from_next) {
      if (to_end - to_next < do_max_length()) return partial;
      const char32_t unit = *from_next;
      const char32_t high = Exchange(state, 0);
      if (high && IsLowSurrogate(unit)) {
        to_next = Encode(0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00), to_next);
        continue;
      }
      if (high) to_next = Encode(kReplacement, to_next);
      if (IsHighSurrogate(unit)) {
        Exchange(state, unit);
      } else {
        to_next = Encode(IsLowSurrogate(unit) ? kReplacement : unit, to_next);
      }
    }
    return ok;
  }

  // The end of the text: a half that still waits stays alone.
  result do_unshift(state_type& state, char* to, char* to_end, char*& to_next) const override {
    to_next = to;
    if (state == 0) return noconv;
    if (to_end - to < do_max_length()) return partial;
    Exchange(state, 0);
    to_next = Encode(kReplacement, to_next);
    return ok;
  }

  result do_in(state_type&, const char* from, const char*, const char*& from_next, wchar_t* to, wchar_t*,
               wchar_t*& to_next) const override {
    from_next = from;
    to_next = to;
    return error;
  }

  int do_length(state_type&, const char*, const char*, std::size_t) const override { return 0; }
  int do_encoding() const noexcept override { return -1; }  // depends on the state
  bool do_always_noconv() const noexcept override { return false; }
  // A half that stays alone, and the unit after it.
  int do_max_length() const noexcept override { return 6; }

 private:
  static char32_t Exchange(state_type& state, char32_t value) {
    const auto before = static_cast<char32_t>(state);
    state = static_cast<state_type>(value);
    return before;
  }
};

class Utf8LocaleFactory : public log4cplus::spi::LocalFactoryBase<log4cplus::spi::LocaleFactory> {
 public:
  Utf8LocaleFactory() : LocalFactoryBase(kUtf8LocaleName) {}
  ProductPtr createObject(const log4cplus::helpers::Properties&) override { return Utf8Locale(); }
};
}  // namespace

std::locale Utf8Locale() { return {std::locale::classic(), new Utf8Encoder}; }

void RegisterUtf8Locale() {
  auto& registry = log4cplus::spi::getLocaleFactoryRegistry();
  if (!registry.exists(kUtf8LocaleName)) registry.put(std::make_unique<Utf8LocaleFactory>());
}
