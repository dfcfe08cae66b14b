#include "CJsonObject.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <new>

#include "json/json_parser.h"
#include "json_file.h"

using rapidjson::Document;

namespace {

std::wstring Text(const rapidjson::Value& value) {
  return CStringHelper::UTF8ToUnicode({value.GetString(), value.GetStringLength()});
}

/// A deep copy of a value as a document. RapidJSON's own copy does not copy constant strings.
class CopiedDocument : public Document {
 public:
  CopiedDocument(const rapidjson::Value& value, AllocatorType& allocator) : Document(&allocator) {
    const auto generator = [&](Document&) { return value.Accept(*this); };
    Populate(generator);
  }
  bool String(const char* text, rapidjson::SizeType length, bool) {
    return Document::String(text, length, true);
  }
  bool Key(const char* text, rapidjson::SizeType length, bool) { return String(text, length, true); }
};

}  // namespace

CJsonObject::CJsonObject()
    : m_pDocument(std::make_shared<Document>(rapidjson::kObjectType)), m_pValue(m_pDocument.get()) {}

bool CJsonObject::CreateFrom(const std::wstring& text) {
  try {
    Document document(rapidjson::kObjectType);
    const bool well_formed = !ParseJson(CStringHelper::UnicodeToUTF8(text), document);
    ReplaceWith(std::move(document));
    return well_formed;
  } catch (const std::bad_alloc&) {  // a text that needs too much memory counts as malformed
    m_members.Clear();
    m_pValue->SetObject();
    return false;
  }
}

void CJsonObject::CreateFromFile(const std::wstring& path) { ReplaceWith(ReadJsonFile(path)); }

std::wstring CJsonObject::ToJson() const {
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  m_pValue->Accept(writer);
  return CStringHelper::UTF8ToUnicode({buffer.GetString(), buffer.GetSize()});
}

std::wstring CJsonObject::GetStringValue(const std::wstring& key) const {
  const rapidjson::Value* member = FindMemberOrNull(key);
  return member && member->IsString() ? Text(*member) : std::wstring();
}

long CJsonObject::GetLongValue(const std::wstring& key) const {
  const rapidjson::Value* member = FindMemberOrNull(key);
  return member && member->IsInt() ? member->GetInt() : 0;
}

std::pair<bool, bool> CJsonObject::GetPropertyBoolValue(const std::wstring& key) const {
  const rapidjson::Value* member = FindMemberOrNull(key);
  if (!member || !member->IsBool()) return {false, false};
  return {true, member->GetBool()};
}

std::pair<bool, std::vector<std::wstring>> CJsonObject::GetPropertyStringArrayValue(
    const std::wstring& key) const {
  const rapidjson::Value* member = FindMemberOrNull(key);
  if (!member) return {false, {}};
  if (!member->IsArray()) throw WrongType(key, L"Array");
  std::vector<std::wstring> texts;
  texts.reserve(member->Size());
  for (const rapidjson::Value& element : member->GetArray()) {
    if (!element.IsString()) throw WrongType(key, L"Array");
    texts.push_back(Text(element));
  }
  return {true, std::move(texts)};
}

bool CJsonObject::IsExist(const std::wstring& key) const { return FindMemberOrNull(key) != nullptr; }

void CJsonObject::SetStringValue(const std::wstring& key, const std::wstring& value) {
  auto& allocator = m_pDocument->GetAllocator();
  const auto text = [&allocator](const std::wstring& wide) {
    const std::string utf8 = CStringHelper::UnicodeToUTF8(wide);
    return rapidjson::Value(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()), allocator);
  };
  if (!m_pValue->IsObject()) m_pValue->SetObject();
  if (rapidjson::Value* member = FindMemberOrNull(key)) {
    *member = text(value);
  } else {
    m_pValue->AddMember(text(key), text(value), allocator);
  }
}

rapidjson::Value CJsonObject::CopyValue(const rapidjson::Value& value, Document::AllocatorType& allocator) {
  CopiedDocument copy(value, allocator);
  return rapidjson::Value(std::move(static_cast<rapidjson::Value&>(copy)));
}

void CJsonObject::ReplaceWith(Document&& document) {
  const bool is_sole_owner = m_pValue == m_pDocument.get() && m_pDocument.use_count() == 1;
  if (is_sole_owner) {
    m_members.Clear();
    *m_pDocument = std::move(document);
  } else {
    *m_pValue = CopyValue(document, m_pDocument->GetAllocator());
  }
}
