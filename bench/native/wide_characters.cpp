// The C library's functions on wide characters, for the 16 bits that these have in the measurements; its own
// are for 32 bits. The standard library's strings call them. Hidden, so that no shared library does.
#include <cstddef>
#include <cstring>

#pragma GCC visibility push(hidden)
extern "C" {

std::size_t wcslen(const wchar_t* text) {
  std::size_t size = 0;
  while (text[size] != 0) ++size;
  return size;
}

wchar_t* wmemcpy(wchar_t* to, const wchar_t* from, std::size_t count) {
  return static_cast<wchar_t*>(std::memcpy(to, from, count * sizeof(wchar_t)));
}

wchar_t* wmemmove(wchar_t* to, const wchar_t* from, std::size_t count) {
  return static_cast<wchar_t*>(std::memmove(to, from, count * sizeof(wchar_t)));
}

wchar_t* wmemset(wchar_t* to, wchar_t character, std::size_t count) {
  for (std::size_t index = 0; index < count; ++index) to[index] = character;
  return to;
}

int wmemcmp(const wchar_t* a, const wchar_t* b, std::size_t count) {
  for (std::size_t index = 0; index < count; ++index) {
    if (a[index] != b[index]) return a[index] < b[index] ? -1 : 1;
  }
  return 0;
}

// Found by a search for a character in a std::wstring.
const wchar_t* wmemchr(const wchar_t* text, wchar_t character, std::size_t count) {
  for (std::size_t index = 0; index < count; ++index) {
    if (text[index] == character) return text + index;
  }
  return nullptr;
}
}
#pragma GCC visibility pop
