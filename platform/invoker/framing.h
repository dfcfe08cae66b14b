/// @file Frames: a header with `Content-Length: N`, an empty line, N bytes of content.
#pragma once

#include <cstddef>
#include <optional>
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

  /// Whether the frame is complete.
  bool IsComplete() const { return m_headerEnd && m_bytes.size() >= *m_headerEnd + m_contentLength; }

  /// Whether bytes came after the frame.
  bool HasSurplus() const { return m_headerEnd && m_bytes.size() > *m_headerEnd + m_contentLength; }

  /// The content of the complete frame. The reader must not be used again.
  std::string TakeContent();

 private:
  bool ReadHeaderLine();
  void ReadHeaderField(std::string_view line);
  void EndHeader();

  std::string m_bytes;
  std::size_t m_lineStart = 0;
  std::optional<std::size_t> m_headerEnd;
  std::optional<std::size_t> m_declaredLength;
  std::size_t m_contentLength = 0;
};

}  // namespace invoker
