/// @file Frames: a header with `Content-Length: N`, an empty line, N bytes of content.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace invoker {

inline constexpr std::size_t kMaxHeaderBytes = 8 * 1024;
inline constexpr std::size_t kMaxContentBytes = 64 * 1024 * 1024;

/// `content` with its header in front.
/// @throws NoAnswer if the content is larger than kMaxContentBytes.
std::string MakeFrame(std::string_view content);

/// Assembles one frame from the bytes of a connection, however they are split.
class FrameReader {
 public:
  /// Adds the next bytes. A header that cannot become valid any more is rejected at once, not when it is
  /// complete: otherwise a sender that forgot the header would make this side wait forever.
  /// @throws NoAnswer if the frame is not valid, or the header or content exceeds its limit.
  void Append(std::string_view bytes);

  /// Room for the rest of the content, so that a large one need not be moved; empty until the header is
  /// complete. Tell Fill how many bytes were put there.
  std::span<char> Rest();

  /// `count` bytes were put into Rest, from its first on.
  void Fill(std::size_t count) { m_received += count; }

  /// Whether the frame is complete.
  bool IsComplete() const { return m_hasHeader && m_received >= m_contentLength; }

  /// Whether bytes came after the frame.
  bool HasSurplus() const { return m_hasHeader && m_received > m_contentLength; }

  /// The content of the complete frame. The reader must not be used again.
  std::string TakeContent();

 private:
  bool ReadHeaderLine();
  void ReadHeaderField(std::string_view line);
  void EndHeader();

  std::string m_header;  // and what came with its end
  std::size_t m_lineStart = 0;
  std::optional<std::size_t> m_declaredLength;
  bool m_hasHeader = false;
  std::size_t m_contentLength = 0;
  std::string m_content;
  std::size_t m_received = 0;  // bytes after the header
};

}  // namespace invoker
