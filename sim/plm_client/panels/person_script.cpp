#include "panels/person_script.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "CStringHelper.h"

namespace plm_panels {
namespace {

struct Word {
  std::wstring text;
  bool begins_quoted = false;
  std::size_t equals = std::wstring::npos;  ///< where a field's name ends
};

/// Takes the words of a line, one after the other.
class Words {
 public:
  explicit Words(std::wstring_view line) : m_rest(line) {}

  std::optional<Word> Next() {
    const std::size_t start = m_rest.find_first_not_of(L" \t\r");
    if (start == std::wstring_view::npos) return std::nullopt;
    m_rest.remove_prefix(start);
    Word word;
    word.begins_quoted = m_rest.front() == L'"';
    while (!m_rest.empty() && m_rest.front() != L' ' && m_rest.front() != L'\t' && m_rest.front() != L'\r') {
      Take(word);
    }
    return word;
  }

 private:
  /// A part in quotes, or one character.
  void Take(Word& word) {
    if (m_rest.front() != L'"') {
      if (m_rest.front() == L'=' && !word.begins_quoted && word.equals == std::wstring::npos) {
        word.equals = word.text.size();
      }
      word.text += m_rest.front();
      m_rest.remove_prefix(1);
      return;
    }
    const std::size_t end = m_rest.find(L'"', 1);
    if (end == std::wstring_view::npos) throw std::runtime_error("a quote is not closed");
    word.text += m_rest.substr(1, end - 1);
    m_rest.remove_prefix(end + 1);
  }

  std::wstring_view m_rest;
};

void AddWord(PersonLine& line, const Word& word) {
  if (word.begins_quoted) {
    // Rows beside each other are selected together.
    if (line.choices.empty() || !line.choices.back().field.empty()) line.choices.emplace_back();
    line.choices.back().rows.push_back(word.text);
  } else if (word.equals != std::wstring::npos) {
    line.choices.push_back(
        {.field = word.text.substr(0, word.equals), .value = word.text.substr(word.equals + 1)});
  } else {
    line.actions.push_back(word.text);
  }
}

/// Nothing for an empty line or a remark.
std::optional<PersonLine> ParseLine(const std::wstring& text) {
  Words words(text);
  const std::optional<Word> command = words.Next();
  if (!command || command->text.starts_with(L"#")) return std::nullopt;
  PersonLine line{.command = CStringHelper::UnicodeToUTF8(command->text)};
  while (const std::optional<Word> word = words.Next()) AddWord(line, *word);
  if (line.actions.empty()) throw std::runtime_error("there is no action");
  return line;
}

}  // namespace

PersonScript PersonScript::Read(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  const std::string name = CStringHelper::UnicodeToUTF8(file.wstring());
  if (!stream) throw std::runtime_error(name + " cannot be read");
  return Parse(text, name);
}

PersonScript PersonScript::Parse(std::string_view text, const std::string& name) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  PersonScript script;
  std::istringstream lines{std::string(text)};
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    try {
      if (auto parsed = ParseLine(CStringHelper::UTF8ToUnicode(line))) script.m_lines.push_back(*parsed);
    } catch (const std::runtime_error& fault) {
      throw std::runtime_error(name + ", line " + std::to_string(number) + ": " + fault.what());
    }
  }
  return script;
}

std::optional<PersonLine> PersonScript::Next(std::string_view command) {
  const auto line = std::ranges::find(m_lines, command, &PersonLine::command);
  if (line == m_lines.end()) return std::nullopt;
  PersonLine next = std::move(*line);
  m_lines.erase(line);
  return next;
}

}  // namespace plm_panels
