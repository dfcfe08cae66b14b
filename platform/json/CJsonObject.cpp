#include "CJsonObject.h"

#include <array>
#include <cstring>
#include <new>

#include "base/utf8.h"
#include "json/json_parser.h"
#include "json/json_writer.h"
#include "json_file.h"

namespace {

// Windows calls it E_OUTOFMEMORY.
constexpr long kOutOfMemory = static_cast<long>(0x8007000E);

/// A text as UTF-8. Most are short: they take no memory.
class Utf8Text {
 public:
  explicit Utf8Text(std::wstring_view text) {
    if (text.size() > m_room.size() / utf8::kMaximumBytes) {
      m_long = utf8::Encode(text);
    } else {
      m_size = utf8::EncodeTo(text, m_room.data());
    }
  }

  std::string_view View() const { return m_long.empty() ? std::string_view(m_room.data(), m_size) : m_long; }

 private:
  std::array<char, 256> m_room;
  std::size_t m_size = 0;
  std::string m_long;
};

std::wstring Text(const JsonValue& value) {
  return CStringHelper::UTF8ToUnicode({value.GetString(), value.GetStringLength()});
}

std::wstring Written(const JsonValue& value) {
  JsonBuffer buffer;
  JsonWriter writer(buffer);
  value.Accept(writer);
  return CStringHelper::UTF8ToUnicode({buffer.GetString(), buffer.GetSize()});
}

/// A deep copy of a value as a document. RapidJSON's own copy does not copy constant strings.
class CopiedDocument : public JsonDocument {
 public:
  CopiedDocument(const JsonValue& value, AllocatorType& allocator) : JsonDocument(&allocator) {
    const auto generator = [&](JsonDocument&) { return value.Accept(*this); };
    Populate(generator);
  }
  bool String(const char* text, rapidjson::SizeType length, bool) {
    return JsonDocument::String(text, length, true);
  }
  bool Key(const char* text, rapidjson::SizeType length, bool) { return String(text, length, true); }
};

/// Adds a member to `value`, which becomes an object if it is not one. If memory runs out, `value` is
/// unchanged.
void AddMember(JsonValue& value, JsonValue& name, JsonValue& member, JsonMemory& allocator) {
  // RapidJSON sets the new capacity of an object before it allocates the memory for it. The old memory is
  // neither changed nor freed, so that the bytes of the value are all that must be restored.
  std::array<char, sizeof(JsonValue)> before;
  std::memcpy(before.data(), static_cast<const void*>(&value), before.size());
  try {
    if (!value.IsObject()) value.SetObject();
    value.AddMember(name, member, allocator);
  } catch (const std::bad_alloc&) {
    std::memcpy(static_cast<void*>(&value), before.data(), before.size());
    throw;
  }
}

}  // namespace

CJsonObject::CJsonObject()
    : m_pDocument(std::make_shared<Document>(rapidjson::kObjectType)), m_pValue(m_pDocument.get()) {}

bool CJsonObject::CreateFrom(const std::wstring& text) {
  try {
    Document document(rapidjson::kObjectType);
    const bool well_formed = !ParseWideJson(text, document);
    ReplaceWith(std::move(document));
    return well_formed;
  } catch (const std::bad_alloc&) {  // a text that needs too much memory counts as malformed
    m_members.Clear();
    m_pValue->SetObject();
    return false;
  }
}

void CJsonObject::CreateFromFile(const std::wstring& path) {
  try {
    ReplaceWith(ReadJsonFile(path));
  } catch (const std::bad_alloc&) {
    throw CZALException(kOutOfMemory, L"cannot read \"" + path + L"\": out of memory");
  }
}

std::wstring CJsonObject::ToJson() const { return Written(*m_pValue); }

std::wstring CJsonObject::GetStringValue(std::wstring_view key) const {
  return FindStringValue(key).value_or(std::wstring());
}

std::optional<std::wstring> CJsonObject::FindStringValue(std::wstring_view key) const {
  const Value* member = FindMemberOrNull(key);
  if (!member) return std::nullopt;
  if (member->IsNull()) return std::wstring();
  return member->IsString() ? Text(*member) : Written(*member);
}

long CJsonObject::GetLongValue(const std::wstring& key) const {
  const Value* member = FindMemberOrNull(key);
  return member && member->IsInt() ? member->GetInt() : 0;
}

std::pair<bool, bool> CJsonObject::GetPropertyBoolValue(const std::wstring& key) const {
  const Value* member = FindMemberOrNull(key);
  if (!member || !member->IsBool()) return {false, false};
  return {true, member->GetBool()};
}

std::pair<bool, std::vector<std::wstring>> CJsonObject::GetPropertyStringArrayValue(
    const std::wstring& key) const {
  const Value* member = FindMemberOrNull(key);
  if (!member) return {false, {}};
  if (!member->IsArray()) throw WrongType(key, L"Array");
  std::vector<std::wstring> texts;
  texts.reserve(member->Size());
  for (const Value& element : member->GetArray()) {
    if (!element.IsString()) throw WrongElement(key, L"string");
    texts.push_back(Text(element));
  }
  return {true, std::move(texts)};
}

bool CJsonObject::IsExist(std::wstring_view key) const { return FindMemberOrNull(key) != nullptr; }

void CJsonObject::SetStringValue(std::wstring_view key, std::wstring_view value) {
  auto& allocator = m_pDocument->GetAllocator();
  const auto text = [&allocator](std::string_view utf8) {
    return Value(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()), allocator);
  };
  Value new_value = text(Utf8Text(value).View());
  const Utf8Text name(key);
  if (Value* member = FindMemberOrNull(name.View())) {
    *member = new_value;
  } else {
    Value new_name = text(name.View());
    AddMember(*m_pValue, new_name, new_value, allocator);
  }
}

JsonValue* CJsonObject::FindMemberOrNull(std::wstring_view key) const {
  return FindMemberOrNull(Utf8Text(key).View());
}

JsonValue CJsonObject::CopyValue(const Value& value, Document::AllocatorType& allocator) {
  CopiedDocument copy(value, allocator);
  return Value(std::move(static_cast<Value&>(copy)));
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
