#include "json/json_parser.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <string>
#include <utility>

#include "base/utf8.h"
#include "json_number.h"
#include "json_scan.h"

namespace {

using Reader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;

constexpr int kMaximumLevels = 1000;

// Without RapidJSON's full precision, which reads outside its tables for fractions with hundreds of zeros;
// and without its check of the encoding, which is made beforehand, and faster.
constexpr unsigned kParseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseInsituFlag;

/// A document that receives the parts of a text from the parser. It rejects some that the parser accepts.
class ParsedDocument : public JsonDocument {
 public:
  /// @param numbers the text with its numbers as they stand.
  /// @param parsed what the parser reads and writes over; it differs from `numbers` in numbers only, not in
  ///        their lengths.
  /// @param copies whether strings are copied into the document; otherwise they lie in `parsed`.
  ParsedDocument(std::string_view numbers, std::string& parsed, bool copies)
      : m_numbers(numbers), m_size(parsed.size()), m_copies(copies), m_stream(parsed.data()) {}

  /// Parses the whole text. @return nothing, or the first fault that the parser finds.
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

  bool String(const char* text, rapidjson::SizeType length, bool) {
    return JsonDocument::String(text, length, m_copies);
  }
  bool Key(const char* text, rapidjson::SizeType length, bool) { return String(text, length, true); }

  /// The number that begins at the stream's position. RapidJSON's own result may be wrong.
  bool Double(double) {
    const std::string_view rest = m_numbers.substr(m_stream.Tell());
    const std::string_view number = rest.substr(0, rest.find_first_not_of("+-.0123456789eE"));
    if (const auto nearest = NearestDouble(number)) return JsonDocument::Double(*nearest);
    return Refuse(rapidjson::GetParseError_En(rapidjson::kParseErrorNumberTooBig));
  }

 private:
  std::optional<JsonFault> Parse() {
    Reader reader;
    const rapidjson::ParseResult result = reader.Parse<kParseFlags>(m_stream, *this);
    const std::size_t end = result.IsError() ? result.Offset() : m_stream.Tell();
    if (m_refusal) return JsonFault{end, m_refusal};
    if (result.IsError()) return JsonFault{end, rapidjson::GetParseError_En(result.Code())};
    // The parser stops at a null character as if the text ended there.
    if (end < m_size) {
      return JsonFault{end, rapidjson::GetParseError_En(rapidjson::kParseErrorDocumentRootNotSingular)};
    }
    return std::nullopt;
  }

  bool Enter() { return ++m_level <= kMaximumLevels || Refuse("More than 1,000 levels of nesting."); }

  bool Refuse(const char* reason) {
    m_refusal = reason;
    return false;
  }

  std::string_view m_numbers;
  std::size_t m_size;
  bool m_copies;
  rapidjson::InsituStringStream m_stream;
  int m_level = 0;
  const char* m_refusal = nullptr;
};

/// The earlier of two faults; `other` lies at `offset`, or nowhere if that is std::string_view::npos.
std::optional<JsonFault> Earlier(const std::optional<JsonFault>& fault, std::size_t offset,
                                 rapidjson::ParseErrorCode other) {
  if (offset == std::string_view::npos || (fault && fault->offset <= offset)) return fault;
  return JsonFault{offset, rapidjson::GetParseError_En(other)};
}

/// Parses `text`, which is valid UTF-8 before its byte `invalid`. Strings are copied, or lie in `text`.
std::optional<JsonFault> Parse(std::string& text, std::size_t invalid, bool copies, JsonDocument& document) {
  const JsonScan scan = ScanJson(text);
  std::string original;
  if (scan.has_extreme_number) {
    original = text;
    if (auto changed = WithoutExtremeNumbers(text)) text = *std::move(changed);
  }
  ParsedDocument parsed(scan.has_extreme_number ? original : text, text, copies);
  std::optional<JsonFault> fault = parsed.Read();
  fault = Earlier(fault, scan.lone_low_surrogate, rapidjson::kParseErrorStringUnicodeSurrogateInvalid);
  fault = Earlier(fault, invalid, rapidjson::kParseErrorStringInvalidEncoding);
  if (!fault) document = std::move(parsed);
  return fault;
}

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
  std::string copy(text);
  return Parse(copy, utf8::FindInvalid(text), true, document);
}

std::optional<JsonFault> ParseJsonInPlace(std::string& text, JsonDocument& document) {
  return Parse(text, utf8::FindInvalid(text), false, document);
}

std::optional<JsonFault> ParseWideJson(std::wstring_view text, JsonDocument& document) {
  std::string valid = utf8::Encode(text);
  return Parse(valid, std::string_view::npos, true, document);
}
