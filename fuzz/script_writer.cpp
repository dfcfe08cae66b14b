#include "script_writer.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace fuzz {
namespace {

using registry_script::Key;
using registry_script::Removal;
using registry_script::Root;
using registry_script::RootKey;

constexpr int kMostLevels = 4;

class ScriptWriter {
 public:
  explicit ScriptWriter(Choices choices) : m_choices(choices) {}

  WrittenScript Write() {
    do {
      Root root{m_choices.Flag() ? RootKey::kClassesRoot : RootKey::kLocalMachine, {}};
      Token(root.root == RootKey::kClassesRoot ? L"HKCR" : L"HKLM");
      Token(L"{");
      while (GoesOn()) root.keys.push_back(WriteKey(1));
      Token(L"}");
      m_script.roots.push_back(std::move(root));
    } while (GoesOn());
    return std::move(m_script);
  }

 private:
  bool GoesOn() { return m_choices.AreLeft() && m_choices.Below(4) != 0; }

  /// Something is wrong in the next token, if no other is.
  bool MakesMistake() {
    if (m_script.wrong_line != 0 || m_choices.Below(16) != 1) return false;
    m_script.wrong_line = 1 + static_cast<unsigned>(std::ranges::count(m_script.text, L'\n'));
    return true;
  }

  void Token(const std::wstring& token) {
    static constexpr const wchar_t* kBlanks[] = {L" ", L"\n", L"\t", L"\r\n", L"\xFEFF", L" \n\n "};
    m_script.text += token + m_choices.Of(kBlanks);
  }

  /// A text and how it is written inside a token.
  struct Text {
    std::wstring read;
    std::wstring written;
  };

  Text SomeText() {
    static const Text parts[] = {{L"a", L"a"},
                                 {L"%", L"%%"},
                                 {L"{", L"{"},
                                 {L"}", L"}"},
                                 {L"=", L"="},
                                 {L"val", L"val"},
                                 {L"s", L"s"},
                                 {L"d", L"d"},
                                 {L"HKCR", L"HKCR"},
                                 {L"NoRemove", L"NoRemove"},
                                 {L"7", L"7"},
                                 {L"\x4E2D", L"\x4E2D"},
                                 {L"ForceRemove", L"ForceRemove"}};
    Text text;
    do {
      Text part = m_choices.Of(parts);
      if (m_choices.Below(8) == 1) {
        const auto replacement = std::next(ScriptReplacements().begin(), m_choices.Flag());
        part = {replacement->second, L"%" + replacement->first + L"%"};
      }
      text.read += part.read;
      text.written += part.written;
    } while (GoesOn());
    return text;
  }

  void Quoted(Text& text) {
    if (m_choices.Below(4) == 1) {
      text.read += L"' \t";
      text.written += L"'' \t";
    }
    if (MakesMistake()) {
      static constexpr const wchar_t* kMistakes[] = {L"'%UNKNOWN%'", L"'%'", L"'open\n"};
      Token(m_choices.Of(kMistakes));
    } else {
      Token(L"'" + text.written + L"'");
    }
  }

  /// A name as a word, if it can be one.
  std::wstring Name() {
    Text name = SomeText();
    static const std::wstring syntax[] = {L"{", L"}", L"=", L"val", L"NoRemove", L"ForceRemove"};
    if (m_choices.Flag() || std::ranges::find(syntax, name.read) != std::end(syntax)) {
      Quoted(name);
    } else {
      Token(name.written);
    }
    return name.read;
  }

  std::variant<std::wstring, std::uint32_t> Data() {
    if (MakesMistake()) {
      static constexpr const wchar_t* kMistakes[] = {L"x '1'",  L"'s' '1'", L"s 1", L"d ''",
                                                     L"d '1a'", L"d '-1'",  L"{",   L"d '4294967296'"};
      Token(m_choices.Of(kMistakes));
    }
    if (m_choices.Flag()) {
      Token(L"s");
      Text text = SomeText();
      Quoted(text);
      return text.read;
    }
    static constexpr std::uint32_t kNumbers[] = {0, 1, 10, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    const std::uint32_t number = m_choices.Of(kNumbers);
    Token(L"d");
    Token((m_choices.Flag() ? L"'" : L"'00") + std::to_wstring(number) + L"'");
    return number;
  }

  Key WriteKey(int level) {
    Key key{};
    key.removal = static_cast<Removal>(m_choices.Below(3));
    if (key.removal == Removal::kNever) Token(L"NoRemove");
    if (key.removal == Removal::kWithContents) Token(L"ForceRemove");
    key.name = Name();
    if (m_choices.Flag()) WriteValue(key, L"");
    if (!m_choices.Flag()) return key;
    Token(L"{");
    while (GoesOn()) {
      if (m_choices.Flag() && level < kMostLevels) {
        key.keys.push_back(WriteKey(level + 1));
      } else {
        Token(L"val");
        WriteValue(key, Name());
      }
    }
    Token(L"}");
    return key;
  }

  void WriteValue(Key& key, std::wstring name) {
    Token(L"=");
    key.values.push_back({std::move(name), Data()});
  }

  Choices m_choices;
  WrittenScript m_script{};
};

}  // namespace

const registry_script::Replacements& ScriptReplacements() {
  static const registry_script::Replacements replacements = {{L"CLSID", L"{1234}"},
                                                             {L"MODULE", L"C:\\it's { 100% } = s\\a.dll"}};
  return replacements;
}

WrittenScript WriteScript(Choices choices) { return ScriptWriter(choices).Write(); }

}  // namespace fuzz
