#include "redaction.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "sensitive_name.h"

namespace doctor {
namespace {

constexpr std::size_t kLongestName = 200;
constexpr std::size_t kNone = std::string_view::npos;

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsSpace(char c) { return IsBlank(c) || c == '\r' || c == '\n'; }
bool IsQuote(char c) { return c == '"' || c == '\''; }

/// A part of the text.
struct Part {
  std::size_t begin, end;
};

struct Name {
  Part part;
  bool quoted;
};

/// What replaces a part of the text.
struct Replacement {
  Part part;
  bool quotes;  ///< whether the value of a member of JSON had none
};

class Redactor {
 public:
  explicit Redactor(std::string_view text) : m_text(text) {}

  std::string Run() {
    std::string result;
    std::size_t copied = 0;
    for (std::size_t at = 0; at < m_text.size();) {
      const std::optional<Replacement> found = FindValue(at);
      if (!found) {
        ++at;
        continue;
      }
      result.append(m_text.substr(copied, found->part.begin - copied));
      const std::string quote(found->quotes ? 1 : 0, '"');
      result.append(quote).append(kRedacted).append(quote);
      at = copied = std::max(found->part.end, at + 1);
    }
    return result.append(m_text.substr(copied));
  }

 private:
  char At(std::size_t at) const { return at < m_text.size() ? m_text[at] : '\0'; }
  std::string_view TextOf(Part part) const { return m_text.substr(part.begin, part.end - part.begin); }

  std::size_t Skip(std::size_t at, bool (*skipped)(char)) const {
    while (at < m_text.size() && skipped(m_text[at])) ++at;
    return at;
  }

  std::size_t FindAnyOf(const char* characters, std::size_t at) const {
    return std::min(m_text.find_first_of(characters, at), m_text.size());
  }

  /// The sensitive value that is announced by what stands at `at`; it begins behind it.
  std::optional<Replacement> FindValue(std::size_t at) const {
    switch (m_text[at]) {
      case ':':
        return m_text.substr(at).starts_with("://") ? InUrl(at + 3) : AfterSeparator(at, at + 1);
      case '=':
        return AfterSeparator(at, at + 1);
      case '\xEF':  // the wide colon
        if (m_text.substr(at).starts_with("\xEF\xBC\x9A")) return AfterSeparator(at, at + 3);
        return std::nullopt;
      case '>':
        return InElement(at);
      case '-':
        return AfterOption(at);
      case 'B':
      case 'b':
        return AfterScheme(at);
      default:
        return std::nullopt;
    }
  }

  std::optional<Replacement> AfterSeparator(std::size_t separator, std::size_t after) const {
    const std::optional<Name> name = NameBefore(separator);
    if (!name || !IsSensitiveName(TextOf(name->part))) return std::nullopt;
    const std::size_t begin = Skip(after, name->quoted ? IsSpace : IsBlank);
    return ValueAt(begin, name->quoted);
  }

  /// The name that ends before `end`.
  std::optional<Name> NameBefore(std::size_t end) const {
    while (end > 0 && IsBlank(m_text[end - 1])) --end;
    if (end == 0) return std::nullopt;
    return IsQuote(m_text[end - 1]) ? QuotedNameBefore(end - 1) : PlainNameBefore(end);
  }

  /// @param closing  the quote behind the name.
  std::optional<Name> QuotedNameBefore(std::size_t closing) const {
    std::size_t end = closing;
    while (end > 0 && m_text[end - 1] == '\\') --end;
    const std::size_t opening = end == 0 ? kNone : m_text.rfind(m_text[closing], end - 1);
    if (opening == kNone || end - opening > kLongestName) return std::nullopt;
    return Name{{opening + 1, end}, true};
  }

  std::optional<Name> PlainNameBefore(std::size_t end) const {
    std::size_t begin = WordBefore(end);
    // The name of a function before the number of its line.
    if (begin >= 2 && m_text.substr(begin - 2, 2) == "::") return std::nullopt;
    // "user name"
    if (EndsTwoWords(m_text.substr(begin, end - begin)) && begin > 0 && m_text[begin - 1] == ' ') {
      begin = WordBefore(begin - 1);
    }
    return begin == end ? std::nullopt : std::optional(Name{{begin, end}, false});
  }

  std::size_t WordBefore(std::size_t end) const {
    std::size_t begin = end;
    while (begin > 0 && end - begin < kLongestName && IsNameCharacter(m_text[begin - 1])) --begin;
    return begin;
  }

  std::optional<Replacement> ValueAt(std::size_t begin, bool is_member) const {
    const std::size_t quote = Skip(begin, [](char c) { return c == '\\'; });
    if (IsQuote(At(quote))) return Replacement{{quote + 1, EndOfQuoted(quote, quote - begin)}, false};
    if (At(begin) == '{' || At(begin) == '[') return Replacement{{begin, EndOfBrackets(begin)}, is_member};
    const std::size_t end = FindAnyOf(is_member ? ",}]\r\n\t " : "\r\n", begin);
    if (begin == end) return std::nullopt;
    return Replacement{{begin, end}, is_member};
  }

  /// Where the text of the quote at `opening` ends. As many backslashes as before it stand before the closing
  /// one, or more in which each two levels of escaping are closed.
  std::size_t EndOfQuoted(std::size_t opening, std::size_t backslashes) const {
    const std::size_t line_end = FindAnyOf("\r\n", opening);
    for (std::size_t at = opening + 1; at < line_end; ++at) {
      if (m_text[at] != m_text[opening]) continue;
      std::size_t escape = at;
      while (escape > opening + 1 && m_text[escape - 1] == '\\') --escape;
      if ((at - escape) % (2 * (backslashes + 1)) == backslashes) return at - backslashes;
    }
    return line_end;
  }

  /// Behind the bracket that closes the one at `begin`; the end of the text if none does.
  std::size_t EndOfBrackets(std::size_t begin) const {
    std::size_t depth = 0;
    for (std::size_t at = begin; at < m_text.size(); ++at) {
      const char c = m_text[at];
      if (c == '{' || c == '[') ++depth;
      if ((c == '}' || c == ']') && --depth == 0) return at + 1;
      if (c == '"') {
        std::size_t backslashes = 0;
        while (at - backslashes > begin && m_text[at - backslashes - 1] == '\\') ++backslashes;
        at = std::min(EndOfQuoted(at, backslashes) + backslashes, m_text.size());
      }
    }
    return m_text.size();
  }

  /// `user:password@` of a URL.
  std::optional<Replacement> InUrl(std::size_t begin) const {
    const std::size_t end = FindAnyOf("@/ \t\r\n\"'<>", begin);
    if (At(end) != '@' || end == begin) return std::nullopt;
    return Replacement{{begin, end}, false};
  }

  /// `<password>...<`
  std::optional<Replacement> InElement(std::size_t closing) const {
    const std::size_t opening = m_text.rfind('<', closing);
    if (opening == kNone || closing - opening > kLongestName || At(opening + 1) == '/') return std::nullopt;
    const std::size_t name_end = std::min(FindAnyOf(" \t\r\n", opening), closing);
    if (!IsSensitiveName(TextOf({opening + 1, name_end}))) return std::nullopt;
    const std::size_t end = FindAnyOf("<", closing);
    if (end == closing + 1) return std::nullopt;
    return Replacement{{closing + 1, end}, false};
  }

  /// `--password ...`
  std::optional<Replacement> AfterOption(std::size_t at) const {
    if (!m_text.substr(at).starts_with("--")) return std::nullopt;
    std::size_t end = at + 2;
    while (end < m_text.size() && IsNameCharacter(m_text[end])) ++end;
    if (!IsBlank(At(end)) || !IsSensitiveName(TextOf({at + 2, end}))) return std::nullopt;
    const std::size_t begin = Skip(end, IsBlank);
    if (IsQuote(At(begin))) return Replacement{{begin + 1, EndOfQuoted(begin, 0)}, false};
    const std::size_t value_end = WithoutClosing(begin, FindAnyOf(" \t\r\n", begin));
    if (value_end == begin) return std::nullopt;
    return Replacement{{begin, value_end}, false};
  }

  /// Where a value ends that may be the last word of a text in JSON: what closes this text is not part of it.
  std::size_t WithoutClosing(std::size_t begin, std::size_t end) const {
    const std::size_t last = m_text.substr(begin, end - begin).find_last_not_of("\"'\\,]}");
    return last == kNone ? end : begin + last + 1;
  }

  /// `Bearer ...`, `Basic ...`
  std::optional<Replacement> AfterScheme(std::size_t at) const {
    for (const std::string_view scheme : {"bearer ", "basic "}) {
      if (!EqualButForCase(m_text.substr(at, scheme.size()), scheme)) continue;
      const std::size_t begin = at + scheme.size();
      const std::size_t end = FindAnyOf(" \t\r\n\"'\\,", begin);
      if (end != begin) return Replacement{{begin, end}, false};
    }
    return std::nullopt;
  }

  std::string_view m_text;
};

}  // namespace

std::string Redact(std::string_view text) { return Redactor(text).Run(); }

}  // namespace doctor
