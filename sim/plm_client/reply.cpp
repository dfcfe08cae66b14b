#include "plm_client/reply.h"

#include <utility>

#include "frame.h"
#include "plm_client/json_text.h"

namespace plm_client {

Reply Reply::Text(std::string text) { return Result("{\"answer\":" + JsonString(text) + "}"); }

Reply Reply::Error(int code, const std::string& message) {
  Reply reply;
  reply.m_member =
      "\"error\":{\"code\":" + std::to_string(code) + ",\"message\":" + JsonString(message) + "}";
  return reply;
}

Reply Reply::Result(const std::string& result) {
  Reply reply;
  reply.m_member = "\"result\":" + result;
  return reply;
}

Reply Reply::Message(const std::string& message) { return Bytes(MakeFrame(message)); }

Reply Reply::Bytes(std::string bytes) {
  Reply reply;
  reply.m_before = std::move(bytes);
  return reply;
}

Reply Reply::Nothing() { return {}; }

Reply Reply::After(std::chrono::milliseconds delay) && {
  m_delay = delay;
  return std::move(*this);
}

Reply Reply::Following(const std::string& message) && {
  m_before += MakeFrame(message);
  return std::move(*this);
}

Reply Reply::FollowedBy(const std::string& message) && {
  m_after += MakeFrame(message);
  return std::move(*this);
}

Reply Reply::WithId(std::uint64_t id) && {
  m_id = id;
  return std::move(*this);
}

Reply Reply::InPiecesOf(std::size_t bytes) && {
  m_pieceSize = bytes;
  return std::move(*this);
}

Reply Reply::ThenDisconnect() && {
  m_disconnects = true;
  return std::move(*this);
}

std::string Reply::BytesFor(std::uint64_t id) const {
  if (m_member.empty()) return m_before + m_after;
  const std::string head = "{\"jsonrpc\":\"2.0\",\"id\":" + std::to_string(m_id.value_or(id)) + ",";
  return m_before + MakeFrame(head + m_member + "}") + m_after;
}

}  // namespace plm_client
