#include "utf8_locale.h"

#include <log4cplus/spi/factory.h>

#include <cwchar>
#include <memory>

#include "base/utf8.h"
#include "configuration/log_names.h"

namespace {
/// Converts UTF-16 to UTF-8. The state is a pending high surrogate, or 0.
class Utf8Encoder : public std::codecvt<wchar_t, char, std::mbstate_t> {
 protected:
  result do_out(state_type& state, const wchar_t* from, const wchar_t* from_end, const wchar_t*& from_next,
                char* to, char* to_end, char*& to_next) const override {
    for (from_next = from, to_next = to; from_next != from_end; ++from_next) {
      if (to_end - to_next < do_max_length()) return partial;
      const char32_t unit = *from_next;
      const char32_t high = Exchange(state, 0);
      if (high && utf8::IsLowSurrogate(unit)) {
        to_next = utf8::Write(utf8::Combine(high, unit), to_next);
        continue;
      }
      if (high) to_next = utf8::Write(utf8::kReplacement, to_next);
      if (utf8::IsHighSurrogate(unit)) {
        Exchange(state, unit);
      } else {
        to_next = utf8::Write(utf8::IsLowSurrogate(unit) ? utf8::kReplacement : unit, to_next);
      }
    }
    return ok;
  }

  // At the end of the text: a pending high surrogate is a lone one.
  result do_unshift(state_type& state, char* to, char* to_end, char*& to_next) const override {
    to_next = to;
    if (state == 0) return noconv;
    if (to_end - to < do_max_length()) return partial;
    Exchange(state, 0);
    to_next = utf8::Write(utf8::kReplacement, to_next);
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
  // A lone high surrogate, and the unit after it.
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
