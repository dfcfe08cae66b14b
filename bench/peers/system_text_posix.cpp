// The C library's iconv is what a system that is not Windows has for this.
#include <iconv.h>

#include <stdexcept>
#include <vector>

#include "peers/system_text.h"

static_assert(sizeof(wchar_t) == 2, "measured as on Windows, with UTF-16");

namespace {

constexpr const char* kUtf16 = "UTF-16LE";
constexpr const char* kUtf8 = "UTF-8";

/// Converts into room that it keeps.
class Converter {
 public:
  Converter(const char* to, const char* from) : m_descriptor(iconv_open(to, from)) {
    if (m_descriptor == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("iconv knows no UTF-16LE");
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() { iconv_close(m_descriptor); }

  /// @param most the largest number of bytes that the result can have.
  std::string_view Convert(const void* text, std::size_t size, std::size_t most) {
    if (m_room.size() < most) m_room.resize(most);
    char* from = static_cast<char*>(const_cast<void*>(text));  // iconv does not write there
    char* to = m_room.data();
    std::size_t left = m_room.size();
    if (iconv(m_descriptor, &from, &size, &to, &left) == static_cast<std::size_t>(-1)) {
      throw std::runtime_error("iconv refuses the text");
    }
    return {m_room.data(), m_room.size() - left};
  }

 private:
  iconv_t m_descriptor;
  std::vector<char> m_room;
};

}  // namespace

std::string SystemEncode(std::wstring_view text) {
  static Converter converter(kUtf8, kUtf16);
  return std::string(converter.Convert(text.data(), 2 * text.size(), 3 * text.size()));
}

std::wstring SystemDecode(std::string_view text) {
  static Converter converter(kUtf16, kUtf8);
  const std::string_view bytes = converter.Convert(text.data(), text.size(), 2 * text.size());
  return {reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / 2};
}
