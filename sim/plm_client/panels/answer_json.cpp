#include "answer_json.h"

#include "CStringHelper.h"
#include "json/json_writer.h"
// After the configuration, which must come first.
#include <rapidjson/prettywriter.h>

namespace plm_panels {

class AnswerJson::Writer {
 public:
  Writer() { m_json.SetIndent(' ', 2); }

  void Write(std::wstring_view text) { WriteUtf8(CStringHelper::UnicodeToUTF8(text)); }
  void WriteUtf8(std::string_view text) {
    m_json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
  }
  auto& Json() { return m_json; }
  std::wstring Done() {
    m_json.EndObject();
    return CStringHelper::UTF8ToUnicode({m_buffer.GetString(), m_buffer.GetSize()});
  }

 private:
  JsonBuffer m_buffer;
  rapidjson::PrettyWriter<JsonBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator> m_json{
      m_buffer};
};

AnswerJson::AnswerJson() : m_writer(std::make_unique<Writer>()) { m_writer->Json().StartObject(); }
AnswerJson::~AnswerJson() = default;

AnswerJson& AnswerJson::Flag(std::string_view name, bool value) {
  m_writer->WriteUtf8(name);
  m_writer->Json().Bool(value);
  return *this;
}

AnswerJson& AnswerJson::Text(std::string_view name, std::wstring_view value) {
  m_writer->WriteUtf8(name);
  m_writer->Write(value);
  return *this;
}

AnswerJson& AnswerJson::Texts(std::string_view name, const std::vector<std::wstring>& values) {
  m_writer->WriteUtf8(name);
  m_writer->Json().StartArray();
  for (const std::wstring& value : values) m_writer->Write(value);
  m_writer->Json().EndArray();
  return *this;
}

AnswerJson& AnswerJson::Object(std::string_view name, const plm_vault::Properties& members) {
  m_writer->WriteUtf8(name);
  m_writer->Json().StartObject();
  for (const auto& [member, value] : members) {
    m_writer->Write(member);
    m_writer->Write(value);
  }
  m_writer->Json().EndObject();
  return *this;
}

std::wstring AnswerJson::Done() { return m_writer->Done(); }

}  // namespace plm_panels
