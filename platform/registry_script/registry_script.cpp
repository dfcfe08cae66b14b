#include "registry_script/registry_script.h"

#include <limits>
#include <utility>

namespace registry_script {

namespace {

struct Token {
  std::wstring text;
  unsigned line;
  bool quoted;

  bool Is(std::wstring_view word) const { return !quoted && text == word; }
};

bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == L'\xFEFF'; }

class Lexer {
 public:
  Lexer(std::wstring_view text, const Replacements& replacements)
      : m_text(text), m_replacements(replacements) {}

  std::vector<Token> Tokens() {
    std::vector<Token> tokens;
    for (SkipBlanks(); m_at < m_text.size(); SkipBlanks()) {
      const unsigned line = m_line;
      const bool quoted = m_text[m_at] == L'\'';
      const std::wstring raw = quoted ? Quoted() : Word();
      tokens.push_back({Replaced(raw, line), line, quoted});
    }
    return tokens;
  }

 private:
  void SkipBlanks() {
    for (; m_at < m_text.size() && IsBlank(m_text[m_at]); ++m_at) m_line += m_text[m_at] == L'\n';
  }

  std::wstring Quoted() {
    std::wstring token;
    const std::size_t start = m_at++;
    for (; m_at < m_text.size() && m_text[m_at] != L'\n'; ++m_at) {
      if (m_text[m_at] == L'\'') {
        const bool doubled = m_text.substr(m_at + 1, 1) == L"'";
        ++m_at;
        if (!doubled) return token;
      }
      token += m_text[m_at];
    }
    throw Error(m_line, L"the closing quote is missing", m_text.substr(start, m_at - start));
  }

  std::wstring Word() {
    const std::size_t start = m_at;
    while (m_at < m_text.size() && !IsBlank(m_text[m_at])) ++m_at;
    return std::wstring(m_text.substr(start, m_at - start));
  }

  std::wstring Replaced(std::wstring_view token, unsigned line) const {
    std::wstring result;
    for (std::size_t at = 0; at < token.size(); ++at) {
      if (token[at] != L'%') {
        result += token[at];
        continue;
      }
      const std::size_t end = token.find(L'%', at + 1);
      if (end == token.npos) throw Error(line, L"the closing percent sign is missing", token);
      result += Replacement(token.substr(at + 1, end - at - 1), line);
      at = end;
    }
    return result;
  }

  std::wstring Replacement(std::wstring_view name, unsigned line) const {
    if (name.empty()) return L"%";
    const auto found = m_replacements.find(name);
    if (found == m_replacements.end()) throw Error(line, L"unknown replacement", name);
    return found->second;
  }

  std::wstring_view m_text;
  const Replacements& m_replacements;
  std::size_t m_at = 0;
  unsigned m_line = 1;
};

class Parser {
 public:
  explicit Parser(std::vector<Token> tokens) : m_tokens(std::move(tokens)) {}

  std::vector<Root> Roots() {
    std::vector<Root> roots;
    while (m_at < m_tokens.size()) {
      const RootKey root = RootOf(Next(L"a root"));
      Expect(L"{");
      Key all{};
      Contents(all);
      if (!all.values.empty())
        throw Error(Last().line, L"the value is not inside a key", all.values.front().name);
      roots.push_back({root, std::move(all.keys)});
    }
    return roots;
  }

 private:
  static RootKey RootOf(const Token& token) {
    if (token.Is(L"HKCR")) return RootKey::kClassesRoot;
    if (token.Is(L"HKLM")) return RootKey::kLocalMachine;
    throw Error(token.line, L"HKCR or HKLM expected", token.text);
  }

  // Reads up to the closing brace of a key; the opening one has been read.
  void Contents(Key& parent) {
    while (!TakeIf(L"}")) {
      if (TakeIf(L"val")) {
        std::wstring name = Name(L"the name of a value");
        if (!TakeIf(L"=")) throw Error(Last().line, L"'=' expected after the value", name);
        parent.values.push_back({std::move(name), Data()});
      } else {
        parent.keys.push_back(ReadKey());
      }
    }
  }

  Key ReadKey() {
    Key key{};
    if (TakeIf(L"NoRemove"))
      key.removal = Removal::kNever;
    else if (TakeIf(L"ForceRemove"))
      key.removal = Removal::kWithContents;
    key.name = Name(L"the name of a key");
    if (TakeIf(L"=")) key.values.push_back({L"", Data()});
    if (TakeIf(L"{")) Contents(key);
    return key;
  }

  std::wstring Name(std::wstring_view what) {
    const Token& token = Next(what);
    const bool is_syntax = token.Is(L"{") || token.Is(L"}") || token.Is(L"=");
    if (is_syntax || token.text.empty())
      throw Error(token.line, std::wstring(what) + L" expected", token.text);
    return token.text;
  }

  std::variant<std::wstring, std::uint32_t> Data() {
    const Token& type = Next(L"the type of a value");
    if (!type.Is(L"s") && !type.Is(L"d")) throw Error(type.line, L"the type s or d expected", type.text);
    const Token& data = Next(L"the data of a value");
    if (!data.quoted) throw Error(data.line, L"data in quotes expected", data.text);
    if (type.Is(L"s")) return data.text;
    return Number(data);
  }

  static std::uint32_t Number(const Token& token) {
    unsigned long long number = 0;
    for (const wchar_t digit : token.text) {
      if (digit < L'0' || digit > L'9') throw Error(token.line, L"a decimal number expected", token.text);
      number = number * 10 + static_cast<unsigned>(digit - L'0');
      if (number > std::numeric_limits<std::uint32_t>::max())
        throw Error(token.line, L"the number does not fit into 32 bits", token.text);
    }
    if (token.text.empty()) throw Error(token.line, L"a decimal number expected", token.text);
    return static_cast<std::uint32_t>(number);
  }

  const Token& Next(std::wstring_view what) {
    if (m_at == m_tokens.size()) {
      throw Error(m_at ? Last().line : 1, L"unexpected end of the script; expected", what);
    }
    return m_tokens[m_at++];
  }

  const Token& Last() const { return m_tokens[m_at - 1]; }

  bool TakeIf(std::wstring_view word) {
    if (m_at == m_tokens.size()) {
      if (word == L"}") throw Error(Last().line, L"unexpected end of the script; expected", word);
      return false;
    }
    if (!m_tokens[m_at].Is(word)) return false;
    ++m_at;
    return true;
  }

  void Expect(std::wstring_view word) {
    const Token& token = Next(word);
    if (!token.Is(word)) throw Error(token.line, std::wstring(word) + L" expected", token.text);
  }

  std::vector<Token> m_tokens;
  std::size_t m_at = 0;
};

}  // namespace

Error::Error(unsigned line, std::wstring_view problem, std::wstring_view token)
    : m_message(L"line " + std::to_wstring(line) + L": ") {
  m_message.append(problem).append(L": \"").append(token).append(L"\"");
}

std::vector<Root> Parse(std::wstring_view text, const Replacements& replacements) {
  return Parser(Lexer(text, replacements).Tokens()).Roots();
}

}  // namespace registry_script
