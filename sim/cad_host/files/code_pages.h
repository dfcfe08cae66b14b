/// @file Code pages of property sets: who reads or writes a set gets the conversions as functions, because
/// only the system knows the code pages.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace cad_host {

/// Turns bytes of a code page, by its number, into text. @throws UnknownCodePage.
using CodePageDecoder = std::wstring (*)(std::string_view bytes, unsigned code_page);

/// Turns text into bytes of a code page, by its number; empty if the code page cannot spell the text.
using CodePageEncoder = std::optional<std::string> (*)(std::wstring_view text, unsigned code_page);

/// The system does not know a code page.
class UnknownCodePage : public std::runtime_error {
 public:
  explicit UnknownCodePage(unsigned number) : std::runtime_error("a code page"), code_page(number) {}

  unsigned code_page;
};

/// The code page of a section cannot spell the name of a new property.
class UnspellableName : public std::runtime_error {
 public:
  UnspellableName(std::wstring property_name, unsigned number)
      : std::runtime_error("the name of a property"), name(std::move(property_name)), code_page(number) {}

  std::wstring name;
  unsigned code_page;
};

}  // namespace cad_host
