/// @file JSON objects, built on RapidJSON.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "CStringHelper.h"
#include "CZALException.h"
#include "base/platform_codes.h"
#include "detail/json_document.h"
#include "detail/json_member_index.h"

/// A JSON value: the root of a document of its own, or a view of a value in another object's document.
///
/// Keys and strings are wide strings in this interface and UTF-8 inside. Keys are plain names, compared
/// exactly; if a name occurs twice, the first member counts. If this value is not an object, it has no
/// members. If memory runs out, an operation throws std::bad_alloc and leaves the object unchanged, unless it
/// says otherwise.
class CJsonObject {
 public:
  using Document = JsonDocument;
  using Value = JsonValue;
  using Pointer = std::shared_ptr<CJsonObject>;

  /// An empty object `{}` with a document of its own.
  CJsonObject();

  /// A view of `value`, which belongs to `document`. Changes through the view change the parent, until the
  /// parent gets other content or a new member; then a new view is needed. The old view remains safe.
  CJsonObject(std::shared_ptr<Document> document, Value* value)
      : m_pDocument(std::move(document)), m_pValue(value) {}

  CJsonObject(const CJsonObject&) = delete;
  CJsonObject& operator=(const CJsonObject&) = delete;
  virtual ~CJsonObject() = default;

  /// Parses `text` into this object, replacing its content.
  /// @return false if the text is empty, malformed, nested deeper than 1,000 levels or does not fit into
  ///         memory; this object is then empty. Never throws.
  bool CreateFrom(const std::wstring& text);

  /// Parses the UTF-8 file at `path` into this object, replacing its content; a byte-order mark is
  /// accepted.
  /// @throws CZALException if the file cannot be read or is malformed; it names the path, and the line and
  ///         column of the first fault. E_OUTOFMEMORY and the path if memory runs out. This object is then
  ///         unchanged.
  void CreateFromFile(const std::wstring& path);

  /// The compact JSON text: members in order; only the quote, the backslash and control characters are
  /// escaped.
  std::wstring ToJson() const;

  /// The string member `key`; the empty string if it is missing or null. A member of another type reads as
  /// ToJson writes it: `5`, `true`, `{"a":"b"}`.
  std::wstring GetStringValue(std::wstring_view key) const;

  /// The same text; nothing if the member is missing.
  std::optional<std::wstring> FindStringValue(std::wstring_view key) const;

  /// The integer member `key`; 0 if it is missing, not a number, a fraction or beyond 32 bits.
  long GetLongValue(const std::wstring& key) const;

  /// (found, value) of the boolean member `key`; (false, false) if it is missing or not a boolean.
  std::pair<bool, bool> GetPropertyBoolValue(const std::wstring& key) const;

  /// (found, strings in array order) of the member `key`; (false, empty) if it is missing.
  /// @throws CZALException 0xA3013001 if the member is not an array or an element is not a string.
  std::pair<bool, std::vector<std::wstring>> GetPropertyStringArrayValue(const std::wstring& key) const;

  /// Whether the member `key` exists, with any type.
  bool IsExist(std::wstring_view key) const;

  /// Adds the string member `key`, or replaces its value. If this value is not an object, it becomes one.
  void SetStringValue(std::wstring_view key, std::wstring_view value);

  /// The document, for creating a view.
  const std::shared_ptr<Document>& Share() const { return m_pDocument; }

  /// One object per element of the array member `key`, each with a document of its own that holds a deep
  /// copy of the element's members.
  /// @throws CZALException 0xA3013000 if the member is missing, 0xA3013001 if it is not an array or an
  ///         element is not an object.
  std::vector<Pointer> GetObjectArray(const std::wstring& key) const {
    const Value& array = FindMember(key);
    if (!array.IsArray()) throw WrongType(key, L"Array");
    std::vector<Pointer> objects;
    objects.reserve(array.Size());
    for (const Value& element : array.GetArray()) {
      if (!element.IsObject()) throw WrongElement(key, L"object");
      objects.push_back(CopyOf(element));
    }
    return objects;
  }

  /// The object member `key`, with a document of its own that holds a deep copy of the members.
  /// @throws CZALException 0xA3013000 if the member is missing, 0xA3013001 if it is not an object.
  Pointer GetObjectCopy(const std::wstring& key) const {
    const Value& object = FindMember(key);
    if (!object.IsObject()) throw WrongType(key, L"Object");
    return CopyOf(object);
  }

  /// The object member `key` as a view of this object's document.
  /// @throws CZALException 0xA3013000 if the member is missing, 0xA3013001 if it is not an object.
  Pointer GetObjectShared(const std::wstring& key) const {
    Value& object = FindMember(key);
    if (!object.IsObject()) throw WrongType(key, L"Object");
    return std::make_shared<CJsonObject>(Share(), &object);
  }

  /// Replaces this object's content with a deep copy of all members of `other`, which must be an object;
  /// either may be a view of a part of the other.
  void CopyFrom(const CJsonObject& other) {
    Value copy(rapidjson::kObjectType);
    CopyMembers(*other.m_pValue, copy);
    *m_pValue = copy;
  }

 private:
  static CZALException WrongType(const std::wstring& key, const wchar_t* type) {
    return {platform_code::kJsonWrongType, L"json member [" + key + L"] is not " + type + L"!"};
  }

  static CZALException WrongElement(const std::wstring& key, const wchar_t* type) {
    return {platform_code::kJsonWrongType, L"json member [" + key + L"] has an element that is no " + type};
  }

  /// The first member `key`; throws 0xA3013000 if it is missing or this is not an object.
  Value& FindMember(const std::wstring& key) const {
    Value* member = FindMemberOrNull(key);
    if (!member) {
      throw CZALException(platform_code::kJsonMemberMissing, L"json member [" + key + L"] not exist!");
    }
    return *member;
  }

  /// The first member `key`; null if it is missing or this is not an object.
  Value* FindMemberOrNull(std::wstring_view key) const;

  Value* FindMemberOrNull(std::string_view utf8_key) const {
    RAPIDJSON_ASSERT(m_pDocument != nullptr);
    return m_pValue->IsObject() ? m_members.Find(*m_pValue, utf8_key) : nullptr;
  }

  /// An object with a document of its own that holds deep copies of the members of `object`.
  static Pointer CopyOf(const Value& object) {
    auto copy = std::make_shared<CJsonObject>();
    copy->CopyMembers(object, *copy->m_pValue);
    return copy;
  }

  /// Adds deep copies of the members of `object` to `target`, a value of this document, in member order.
  void CopyMembers(const Value& object, Value& target) const {
    auto& allocator = m_pDocument->GetAllocator();
    for (auto member = object.MemberBegin(); member != object.MemberEnd(); ++member) {
      target.AddMember(CopyValue(member->name, allocator), CopyValue(member->value, allocator), allocator);
    }
  }

  /// A deep copy of `value`, strings included.
  static Value CopyValue(const Value& value, Document::AllocatorType& allocator);

  /// Replaces the content with `document`. Views of this object, or its parent, keep the document that they
  /// share.
  void ReplaceWith(Document&& document);

  std::shared_ptr<Document> m_pDocument;
  Value* m_pValue;                    // within *m_pDocument
  mutable JsonMemberIndex m_members;  // of *m_pValue
};
