#include "peers/rapidjson_peer.h"

#define RAPIDJSON_NAMESPACE peer_rapidjson
#define RAPIDJSON_NAMESPACE_BEGIN namespace peer_rapidjson {
#define RAPIDJSON_NAMESPACE_END }
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "peers/system_text.h"

namespace {

constexpr unsigned kFlags = peer_rapidjson::kParseIterativeFlag | peer_rapidjson::kParseValidateEncodingFlag;

template <class Read>
std::size_t ReadLists(const std::string& text, Read read) {
  peer_rapidjson::Document document;
  document.Parse<kFlags>(text.data(), text.size());
  std::size_t size = 0;
  for (const char* list : {"OpenFile", "InsertFile", "ReplaceFileByCovering", "ReplaceFile"}) {
    for (const auto& element : document[list].GetArray()) {
      size += read(std::string_view(element.GetString(), element.GetStringLength()));
    }
  }
  return size;
}

}  // namespace

std::size_t RapidJsonRead(const std::string& text) {
  return ReadLists(text, [](std::string_view element) { return element.size(); });
}

std::size_t RapidJsonReadWide(std::wstring_view text) {
  return ReadLists(SystemEncode(text), [](std::string_view element) { return SystemDecode(element).size(); });
}

struct RapidJsonDocument::Content {
  peer_rapidjson::Document document;
};

RapidJsonDocument::RapidJsonDocument(std::string_view text) : m_content(std::make_unique<Content>()) {
  m_content->document.Parse<kFlags>(text.data(), text.size());
}

RapidJsonDocument::~RapidJsonDocument() = default;

std::string RapidJsonDocument::Write() const {
  peer_rapidjson::StringBuffer buffer;
  peer_rapidjson::Writer<peer_rapidjson::StringBuffer> writer(buffer);
  m_content->document.Accept(writer);
  return {buffer.GetString(), buffer.GetSize()};
}

bool RapidJsonDocument::IsValid() const { return !m_content->document.HasParseError(); }

std::string RapidJsonAnswerText(std::string_view message) {
  peer_rapidjson::Document parsed;
  parsed.Parse<kFlags>(message.data(), message.size());
  const auto& answer = parsed["result"]["answer"];
  return {answer.GetString(), answer.GetStringLength()};
}

std::unique_ptr<RapidJsonDocument> RapidJsonAnswer(std::string_view message) {
  peer_rapidjson::Document parsed;
  parsed.Parse<kFlags>(message.data(), message.size());
  if (parsed.HasParseError()) return nullptr;
  const auto& answer = parsed["result"]["answer"];
  auto document =
      std::make_unique<RapidJsonDocument>(std::string_view(answer.GetString(), answer.GetStringLength()));
  return document->IsValid() ? std::move(document) : nullptr;
}
