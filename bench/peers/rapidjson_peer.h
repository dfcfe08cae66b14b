/// @file The same jobs with RapidJSON as it comes.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// Parses UTF-8 with the flags of the product. @return the number of bytes in the texts of the four lists.
std::size_t RapidJsonRead(const std::string& text);

/// Converts with the system's functions, parses, and converts each text of the four lists.
/// @return the number of characters in them.
std::size_t RapidJsonReadWide(std::wstring_view text);

/// A parsed document.
class RapidJsonDocument {
 public:
  explicit RapidJsonDocument(std::string_view text);
  RapidJsonDocument(const RapidJsonDocument&) = delete;
  RapidJsonDocument& operator=(const RapidJsonDocument&) = delete;
  ~RapidJsonDocument();

  /// Whether the text was well-formed.
  bool IsValid() const;

  /// @return the text as RapidJSON's writer writes it.
  std::string Write() const;

 private:
  struct Content;
  std::unique_ptr<Content> m_content;
};

/// The answer in a message, as text.
std::string RapidJsonAnswerText(std::string_view message);

/// Parses a message, and the answer in it. @return the answer; null if either is malformed.
std::unique_ptr<RapidJsonDocument> RapidJsonAnswer(std::string_view message);
