#include "script.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <utility>

#include "CStringHelper.h"
#include "cad_host/host_error.h"

namespace cad_host {
namespace {

constexpr std::wstring_view kBlanks = L" \t\r";
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

std::string ReadAll(const std::wstring& path) {
  if (path == L"-") return {std::istreambuf_iterator<char>(std::cin), {}};
  std::ifstream file(path.c_str(), std::ios::binary);
  if (!file) throw HostError(L"cannot read the script " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

bool NeedsQuotes(const std::wstring& word) {
  return word.empty() || word.starts_with(L'#') || word.starts_with(L'"') ||
         word.find_first_of(L" \t\r\n") != std::wstring::npos;
}

std::wstring Quoted(const std::wstring& word) {
  if (word.find_first_of(L"\r\n") != std::wstring::npos) {
    throw HostError(L"\"" + word + L"\" has a line break, which a session script cannot have");
  }
  std::wstring quoted = L"\"";
  for (const wchar_t character : word) {
    if (character == L'"') quoted += L'"';
    quoted += character;
  }
  return quoted + L'"';
}

}  // namespace

Command::Command(std::wstring file, std::size_t line, std::wstring text)
    : m_file(std::move(file)), m_line(line), m_text(std::move(text)) {
  std::size_t place = m_text.find_first_not_of(kBlanks);
  while (place != std::wstring::npos) {
    const bool quoted = m_text[place] == L'"';
    std::size_t end = place;
    const std::wstring word = quoted ? QuotedWord(end) : PlainWord(end);
    m_words.push_back({word, place});
    place = m_text.find_first_not_of(kBlanks, end);
  }
}

std::wstring Command::PlainWord(std::size_t& place) const {
  const std::size_t begin = place;
  place = std::min(m_text.find_first_of(kBlanks, begin), m_text.size());
  return m_text.substr(begin, place - begin);
}

std::wstring Command::QuotedWord(std::size_t& place) const {
  std::wstring word;
  for (std::size_t next = place + 1; next < m_text.size(); ++next) {
    if (m_text[next] != L'"') {
      word += m_text[next];
    } else if (next + 1 < m_text.size() && m_text[next + 1] == L'"') {
      word += m_text[++next];
    } else {
      place = next + 1;
      return word;
    }
  }
  Fail(L"a quote that does not end");
}

std::wstring Command::Place() const { return m_file + L":" + std::to_wstring(m_line); }

void Command::Fail(const std::wstring& message) const { throw HostError(Place() + L": " + message); }

const std::wstring& Command::Take(const wchar_t* what) {
  if (AtEnd()) Fail(std::wstring(what) + L" is missing");
  return m_words[m_next++].text;
}

bool Command::TakeIf(std::wstring_view word) {
  if (AtEnd() || m_words[m_next].text != word) return false;
  ++m_next;
  return true;
}

double Command::TakeNumber(const wchar_t* what) {
  const std::wstring& word = Take(what);
  wchar_t* end = nullptr;
  const double number = std::wcstod(word.c_str(), &end);
  if (word.empty() || *end || !std::isfinite(number)) Fail(L"\"" + word + L"\" is not a number for " + what);
  return number;
}

long Command::TakeWholeNumber(const wchar_t* what) {
  const std::wstring& word = Take(what);
  wchar_t* end = nullptr;
  errno = 0;
  const long number = std::wcstol(word.c_str(), &end, 10);
  if (word.empty() || *end || errno == ERANGE) Fail(L"\"" + word + L"\" is not a whole number for " + what);
  return number;
}

std::wstring Command::TakeRest() {
  if (AtEnd()) return {};
  std::wstring rest = m_text.substr(m_words[m_next].place);
  m_next = m_words.size();
  return rest;
}

void Command::ExpectEnd() const {
  if (!AtEnd()) Fail(L"\"" + m_words[m_next].text + L"\" is one word too many");
}

std::wstring ScriptLine(const std::vector<std::wstring>& words) {
  std::wstring line;
  for (const std::wstring& word : words) {
    if (!line.empty()) line += L' ';
    line += NeedsQuotes(word) ? Quoted(word) : word;
  }
  return line;
}

std::wstring ScriptNumber(double number) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  return {digits.data(), end};
}

std::vector<Command> ReadScript(const std::wstring& path) {
  std::string bytes = ReadAll(path);
  if (bytes.starts_with(kByteOrderMark)) bytes.erase(0, kByteOrderMark.size());
  std::istringstream lines(bytes);
  std::vector<Command> commands;
  std::string line;
  for (std::size_t number = 1; std::getline(lines, line); ++number) {
    const std::wstring text = CStringHelper::UTF8ToUnicode(line);
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::wstring::npos || text[begin] == L'#') continue;
    const std::size_t end = text.find_last_not_of(kBlanks);
    commands.emplace_back(path, number, text.substr(begin, end - begin + 1));
  }
  return commands;
}

}  // namespace cad_host
