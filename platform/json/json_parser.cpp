#include "json/json_parser.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <charconv>
#include <string>
#include <utility>

#include "json_number.h"

namespace {

using Reader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;

constexpr int kMaximumLevels = 1000;

// Without RapidJSON's full precision, which reads outside its tables for fractions with hundreds of zeros.
constexpr unsigned kParseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

/// The position of the first escaped low surrogate without a high one before it, which the parser accepts.
/// `text` is what the parser has accepted: backslashes are in strings only, escapes are complete and every
/// high surrogate is followed by a low one.
std::optional<std::size_t> FindLoneLowSurrogate(std::string_view text) {
  constexpr std::size_t kEscapeLength = 6;  // \uXXXX
  std::size_t place = 0;
  while ((place = text.find('\\', place)) != std::string_view::npos) {
    if (text[place + 1] != 'u') {
      place += 2;
      continue;
    }
    unsigned unit = 0;
    std::from_chars(text.data() + place + 2, text.data() + place + kEscapeLength, unit, 16);
    if (unit >= 0xDC00 && unit <= 0xDFFF) return place;
    const bool is_high = unit >= 0xD800 && unit <= 0xDBFF;
    place += is_high ? 2 * kEscapeLength : kEscapeLength;
  }
  return std::nullopt;
}

/// A document that receives the parts of a text from the parser. It rejects some that the parser accepts.
class ParsedDocument : public JsonDocument {
 public:
  /// `parsed` is what the parser reads; it differs from `text` in numbers only, not in their lengths.
  ParsedDocument(std::string_view text, std::string_view parsed)
      : m_text(text), m_stream(parsed.data(), parsed.size()) {}

  /// Parses the whole text. @return nothing, or the first fault.
  std::optional<JsonFault> Read() {
    std::optional<JsonFault> fault;
    const auto generator = [&](JsonDocument&) {
      fault = Parse();
      return !fault;
    };
    Populate(generator);
    return fault;
  }

  bool StartObject() { return Enter() && JsonDocument::StartObject(); }
  bool StartArray() { return Enter() && JsonDocument::StartArray(); }
  bool EndObject(rapidjson::SizeType count) {
    --m_level;
    return JsonDocument::EndObject(count);
  }
  bool EndArray(rapidjson::SizeType count) {
    --m_level;
    return JsonDocument::EndArray(count);
  }

  /// The number that ends at the stream's position. RapidJSON's own result may be wrong.
  bool Double(double) {
    const std::string_view before = m_text.substr(0, m_stream.Tell());
    const std::string_view number = before.substr(before.find_last_not_of("+-.0123456789eE") + 1);
    if (const auto nearest = NearestDouble(number)) return JsonDocument::Double(*nearest);
    return Refuse(rapidjson::GetParseError_En(rapidjson::kParseErrorNumberTooBig));
  }

 private:
  std::optional<JsonFault> Parse() {
    Reader reader;
    const rapidjson::ParseResult result = reader.Parse<kParseFlags>(m_stream, *this);
    const std::size_t end = result.IsError() ? result.Offset() : m_stream.Tell();

    if (const auto place = FindLoneLowSurrogate(m_text.substr(0, end))) {
      return JsonFault{*place,
                       rapidjson::GetParseError_En(rapidjson::kParseErrorStringUnicodeSurrogateInvalid)};
    }
    if (m_refusal) return JsonFault{end, m_refusal};
    if (result.IsError()) return JsonFault{end, rapidjson::GetParseError_En(result.Code())};
    // The parser stops at a null character as if the text ended there.
    if (end < m_text.size()) {
      return JsonFault{end, rapidjson::GetParseError_En(rapidjson::kParseErrorDocumentRootNotSingular)};
    }
    return std::nullopt;
  }

  bool Enter() { return ++m_level <= kMaximumLevels || Refuse("More than 1,000 levels of nesting."); }

  bool Refuse(const char* reason) {
    m_refusal = reason;
    return false;
  }

  std::string_view m_text;
  rapidjson::MemoryStream m_stream;
  int m_level = 0;
  const char* m_refusal = nullptr;
};

}  // namespace

TextPosition PositionInText(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::string_view in_line = before.substr(before.rfind('\n') + 1);
  const auto is_first_byte = [](char c) { return (c & 0xC0) != 0x80; };
  return {1 + static_cast<std::size_t>(std::ranges::count(before, '\n')),
          1 + static_cast<std::size_t>(std::ranges::count_if(in_line, is_first_byte))};
}

std::wstring DescribePositionInText(std::string_view text, std::size_t offset) {
  const TextPosition position = PositionInText(text, offset);
  return L"line " + std::to_wstring(position.line) + L", column " + std::to_wstring(position.column);
}

std::optional<JsonFault> ParseJson(std::string_view text, JsonDocument& document) {
  const std::optional<std::string> changed = WithoutExtremeNumbers(text);
  ParsedDocument parsed(text, changed ? *changed : text);
  const std::optional<JsonFault> fault = parsed.Read();
  if (!fault) document = std::move(parsed);
  return fault;
}
