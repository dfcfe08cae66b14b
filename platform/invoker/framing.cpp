#include "framing.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "no_answer.h"

namespace invoker {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kContentLength = "Content-Length";
constexpr std::string_view kBlanks = " \t";

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool EqualWithoutCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerCase(x) == LowerCase(y); });
}

bool IsNameCharacter(char c) {
  constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  return (LowerCase(c) >= 'a' && LowerCase(c) <= 'z') || (c >= '0' && c <= '9') ||
         kMarks.find(c) != std::string_view::npos;
}

bool IsControlCharacter(char c) { return (static_cast<unsigned char>(c) < ' ' && c != '\t') || c == '\x7F'; }

/// Whether `line`, which may be incomplete, can be a line of a header.
bool CanBeHeaderLine(std::string_view line) {
  const std::string_view name = line.substr(0, line.find(':'));
  return std::all_of(name.begin(), name.end(), IsNameCharacter) &&
         std::none_of(line.begin(), line.end(), IsControlCharacter) && !line.starts_with(':');
}

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::size_t ParseLength(std::string_view text) {
  std::size_t length = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
  if (error == std::errc::invalid_argument || end != text.data() + text.size()) {
    throw NoAnswer{L"the client sent a Content-Length that is not a number"};
  }
  if (error == std::errc::result_out_of_range || length > kMaxContentBytes) {
    throw NoAnswer{L"the client sent a frame over 64 MiB"};
  }
  return length;
}

}  // namespace

std::string MakeFrame(std::string_view content) {
  if (content.size() > kMaxContentBytes) throw NoAnswer{L"the request is over 64 MiB"};
  std::string frame = std::string(kContentLength) + ": " + std::to_string(content.size());
  return frame.append(kLineEnd).append(kLineEnd).append(content);
}

void FrameReader::Append(std::string_view bytes) {
  if (m_hasHeader) {
    m_content.append(bytes);
    m_received += bytes.size();
    return;
  }
  m_header.append(bytes);
  while (!m_hasHeader && ReadHeaderLine()) {
  }
  if (!m_hasHeader && m_header.size() > kMaxHeaderBytes) {
    throw NoAnswer{L"the client sent a header over 8 KiB"};
  }
}

std::span<char> FrameReader::Rest() {
  if (!m_hasHeader) return {};
  m_content.resize(m_contentLength);
  return std::span(m_content).subspan(m_received);
}

/// @return whether a complete line was read, so that another may follow.
bool FrameReader::ReadHeaderLine() {
  // What is beyond the limit is not looked at: how the bytes came in must not decide what is wrong with them.
  const std::string_view header = std::string_view(m_header).substr(0, kMaxHeaderBytes);
  const std::size_t end = header.find(kLineEnd, m_lineStart);
  std::string_view line = header.substr(m_lineStart);
  if (end != header.npos) {
    line = line.substr(0, end - m_lineStart);
  } else if (line.ends_with(kLineEnd.front())) {
    line.remove_suffix(1);
  }
  if (!CanBeHeaderLine(line)) throw NoAnswer{L"the client sent a header that is not valid"};
  if (end == header.npos) return false;

  m_lineStart = end + kLineEnd.size();
  if (line.empty()) {
    EndHeader();
  } else {
    ReadHeaderField(line);
  }
  return true;
}

void FrameReader::ReadHeaderField(std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) throw NoAnswer{L"the client sent a header line without a colon"};
  if (!EqualWithoutCase(line.substr(0, colon), kContentLength)) return;
  if (m_declaredLength) throw NoAnswer{L"the client sent a header with two Content-Length lines"};
  m_declaredLength = ParseLength(Trim(line.substr(colon + 1)));
}

void FrameReader::EndHeader() {
  if (!m_declaredLength) throw NoAnswer{L"the client sent a header without Content-Length"};
  m_hasHeader = true;
  m_contentLength = *m_declaredLength;
  m_content = m_header.substr(m_lineStart);
  m_received = m_content.size();
}

std::string FrameReader::TakeContent() {
  m_content.resize(m_contentLength);
  return std::move(m_content);
}

}  // namespace invoker
