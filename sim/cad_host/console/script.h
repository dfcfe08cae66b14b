/// @file A session script: one command per line, words separated by blanks, "words with blanks" in quotes (a
/// quote in such a word is written twice), `#` at the start of a line for a comment.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cad_host {

/// The words of one command, taken one after the other.
class Command {
 public:
  Command(std::wstring file, std::size_t line, std::wstring text);

  const std::wstring& Text() const { return m_text; }

  /// "demo.txt:12"
  std::wstring Place() const;

  bool AtEnd() const { return m_next == m_words.size(); }

  /// The next word. @throws HostError with the file, the line and `what` if there is no further word.
  const std::wstring& Take(const wchar_t* what);

  /// Takes the next word if it is `word`.
  bool TakeIf(std::wstring_view word);

  /// The next word as a finite number, and as a whole number of 32 bits.
  /// @throws HostError with the file, the line and `what` if the word is missing or is not such a number.
  double TakeNumber(const wchar_t* what);
  long TakeWholeNumber(const wchar_t* what);

  /// The rest of the line, unchanged, with its quotes.
  std::wstring TakeRest();

  /// @throws HostError with the file, the line and the next word if there is one.
  void ExpectEnd() const;

  /// @throws HostError with the file, the line and `message`.
  [[noreturn]] void Fail(const std::wstring& message) const;

 private:
  /// The word that begins at `place`, which is moved behind the word.
  std::wstring PlainWord(std::size_t& place) const;
  std::wstring QuotedWord(std::size_t& place) const;

  struct Word {
    std::wstring text;
    std::size_t place;  // in the line
  };

  std::wstring m_file;
  std::size_t m_line;
  std::wstring m_text;
  std::vector<Word> m_words;
  std::size_t m_next = 0;
};

/// A line of a script with these words, each in quotes if it needs them.
/// @throws HostError quoting the word if it has a line break, which no script can express.
std::wstring ScriptLine(const std::vector<std::wstring>& words);

/// `number` as a word of a script, with as many digits as it takes to read the same number again.
std::wstring ScriptNumber(double number);

/// The commands of a script file in UTF-8; "-" is the standard input.
/// @throws HostError naming the file if it cannot be read, or the line if a quote does not end.
std::vector<Command> ReadScript(const std::wstring& path);

}  // namespace cad_host
