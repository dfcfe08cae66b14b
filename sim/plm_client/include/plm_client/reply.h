/// @file How the client answers a request.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace plm_client {

/// An answer to a request, or one that breaks the protocol in some way. Texts are UTF-8.
///
///     Reply::Text(R"({"OpenFile":[]})").After(200ms).InPiecesOf(1)
class Reply {
 public:
  /// The answer `text`, unchanged. The empty text means that the person chose nothing.
  static Reply Text(std::string text);

  /// An error instead of a result.
  static Reply Error(int code, const std::string& message);

  /// A frame with `result`, any JSON value, as the result.
  static Reply Result(const std::string& result);

  /// A frame with any content, `message`.
  static Reply Message(const std::string& message);

  /// `bytes` without a frame around them.
  static Reply Bytes(std::string bytes);

  /// No answer at all; the connection stays open.
  static Reply Nothing();

  /// Waits before anything is sent.
  Reply After(std::chrono::milliseconds delay) &&;

  /// Sends a frame with `message` before the answer.
  Reply Following(const std::string& message) &&;

  /// Sends a frame with `message` directly after the answer, in the same write.
  Reply FollowedBy(const std::string& message) &&;

  /// Answers with another id than that of the request.
  Reply WithId(std::uint64_t id) &&;

  /// Sends at most `bytes` bytes with each write.
  Reply InPiecesOf(std::size_t bytes) &&;

  /// Closes the connection afterwards.
  Reply ThenDisconnect() &&;

  std::chrono::milliseconds Delay() const { return m_delay; }
  std::size_t PieceSize() const { return m_pieceSize; }
  bool Disconnects() const { return m_disconnects; }

  /// What is sent in answer to request `id`.
  std::string BytesFor(std::uint64_t id) const;

 private:
  std::string m_member;  // "result" or "error" of the answer with its value; empty: there is no answer
  std::string m_before;
  std::string m_after;
  std::optional<std::uint64_t> m_id;
  std::chrono::milliseconds m_delay{0};
  std::size_t m_pieceSize = static_cast<std::size_t>(-1);
  bool m_disconnects = false;
};

}  // namespace plm_client
