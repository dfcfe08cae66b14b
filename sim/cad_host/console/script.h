/// @file A session script: one command a line, words separated by blanks, "words with blanks" in quotes
/// (a quote within them is written twice),
/// `#` at the start of a line for a comment.
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

  /// The next word. @throws HostError naming the file, the line and `what` is missing.
  const std::wstring& Take(const wchar_t* what);

  /// Takes the next word if it is `word`.
  bool TakeIf(std::wstring_view word);

  /// The next word as a finite number, and as a whole one of 32 bits.
  /// @throws HostError naming the file, the line and a word that is none, or that `what` is missing.
  double TakeNumber(const wchar_t* what);
  long TakeWholeNumber(const wchar_t* what);

  /// All that is left of the line as it stands, quotes included.
  std::wstring TakeRest();

  /// @throws HostError naming the file, the line and a word that is left over.
  void ExpectEnd() const;

  /// @throws HostError naming the file and the line before `message`.
  [[noreturn]] void Fail(const std::wstring& message) const;

 private:
  /// The word that begins at `place`, which becomes the place behind it.
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

/// The commands of a script file in UTF-8; "-" is the standard input.
/// @throws HostError naming a file that cannot be read, or a line with a quote that does not end.
std::vector<Command> ReadScript(const std::wstring& path);

}  // namespace cad_host
