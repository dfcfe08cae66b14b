#include "property_set_writer.h"

#include <algorithm>
#include <set>
#include <utility>

#include "property_set_stream.h"

namespace fuzz {
namespace {

using namespace cad_host::property_set;
using cad_host::CustomProperty;

/// A value, and how it is read.
struct Value {
  std::string bytes;
  std::wstring text;
  swCustomInfoType_e type;
};

/// A name or a text: in the bytes of Latin-1, in UTF-16, and as it is read.
struct Text {
  std::string narrow;
  std::u16string wide;
  std::wstring read;
};

const Text kTexts[] = {{"", u"", L""},
                       {"a", u"a", L"a"},
                       {"A", u"A", L"A"},
                       {"bc", u"bc", L"bc"},
                       {"\xFC", u"\xFC", L"\xFC"},
                       {"Yes", u"Yes", L"Yes"},
                       {"1.50", u"1.50", L"1.50"}};

Value Integer(std::string bytes, const wchar_t* text) { return {std::move(bytes), text, swCustomInfoNumber}; }

std::string Padded(std::string bytes) {
  bytes.resize((bytes.size() + 3) / 4 * 4);
  return bytes;
}

class PropertySetWriter {
 public:
  explicit PropertySetWriter(Choices choices) : m_choices(choices) {}

  WrittenPropertySet Write() {
    std::vector<std::pair<SectionId, std::string>> sections;
    do {
      if (m_choices.Below(4) == 1) sections.emplace_back(SectionId{1}, SectionOf(SomeValues()));
      sections.emplace_back(kUserDefined, WriteSection());
      m_isFirst = false;
    } while (m_choices.Below(4) == 1);
    m_set.stream = StreamOf(sections);
    return std::move(m_set);
  }

 private:
  std::string SomeText(const Text& text) { return m_isWide ? WideName(text.wide) : Name(text.narrow); }

  Value TextValue() {
    const Text& text = m_choices.Of(kTexts);
    if (m_choices.Flag()) {
      const std::string wide = WideName(text.wide);
      return {Number(kTypeWideText) + Number(static_cast<std::uint32_t>(wide.size() / 2)) + wide, text.read,
              swCustomInfoText};
    }
    const std::string bytes = SomeText(text);
    return {Number(m_choices.Flag() ? kTypeText : kTypeBstr) +
                Number(static_cast<std::uint32_t>(bytes.size())) + bytes,
            text.read, swCustomInfoText};
  }

  Value SomeValue() {
    static const Value values[] = {
        Integer(Number(kTypeShort) + BytesOf(std::int16_t{-32768}), L"-32768"),
        Integer(Number(kTypeNumber) + BytesOf(INT32_MIN), L"-2147483648"),
        Integer(Number(kTypeNumber) + Number(7), L"7"),
        Integer(Number(kTypeUnsigned) + Number(0xFFFFFFFF), L"4294967295"),
        Integer(Number(kTypeLongNumber) + BytesOf(INT64_MIN), L"-9223372036854775808"),
        Integer(Number(kTypeDouble) + BytesOf(0.1), L"0.1"),
        Integer(Number(kTypeDouble) + BytesOf(-1e300), L"-1e+300"),
        {Number(kTypeFileTime) + BytesOf(std::uint64_t{154556} * 864'000'000'000 + 1), L"2024-02-29",
         swCustomInfoDate},
        {Number(kTypeBool) + Number(0xFFFF), L"Yes", swCustomInfoYesOrNo},
        {Number(kTypeBool) + Number(0), L"No", swCustomInfoYesOrNo},
        {Number(99), L"", swCustomInfoText}};
    return m_choices.Flag() ? TextValue() : m_choices.Of(values);
  }

  ById SomeValues() {
    ById values;
    while (m_choices.Flag()) values.emplace_back(values.size(), Padded(SomeValue().bytes));
    return values;
  }

  std::uint32_t SomeId() {
    static constexpr std::uint32_t kIds[] = {2, 3, 4, 5, 0x7F, 0x100, kLinkBit - 2, kLinkBit - 1};
    return m_choices.Of(kIds);
  }

  /// Puts a value anywhere between the others.
  void Insert(ById& values, std::uint32_t id, std::string bytes) {
    const std::size_t place = m_choices.Below(values.size() + 1);
    values.insert(values.begin() + static_cast<std::ptrdiff_t>(place), {id, Padded(std::move(bytes))});
  }

  std::string WriteSection() {
    m_isWide = m_choices.Flag();
    ById names;
    ById values;
    std::map<std::uint32_t, CustomProperty> properties;
    std::set<std::uint32_t> ids;
    while (m_choices.AreLeft() && m_choices.Below(8) != 0) {
      const std::uint32_t id = SomeId();
      if (!ids.insert(id).second) continue;
      const Text& name = m_choices.Of(kTexts);
      const bool has_name = m_choices.Below(8) != 1;
      const bool has_value = m_choices.Below(8) != 1;
      const Value value = SomeValue();
      if (has_name) names.emplace_back(id, SomeText(name));
      if (has_value) Insert(values, id, value.bytes);
      if (!has_name || !has_value) continue;
      properties[id] = {name.read, value.text, value.type};
      if (m_choices.Below(4) != 1) continue;
      Insert(values, id | kLinkBit, TextValue().bytes);
      if (m_isFirst) m_set.links[id | kLinkBit] = name.read;
    }
    Insert(values, kDictionaryId, m_isWide ? WideDictionary(names) : Dictionary(names));
    Insert(values, kCodePageId, CodePageValue(m_isWide ? kUtf16 : kLatin1));
    for (const auto& [id, property] : properties) {
      if (std::ranges::find(m_set.properties, property.name, &CustomProperty::name) == m_set.properties.end())
        m_set.properties.push_back(property);
    }
    return SectionOf(values);
  }

  Choices m_choices;
  WrittenPropertySet m_set{};
  bool m_isWide = false;
  bool m_isFirst = true;
};

}  // namespace

WrittenPropertySet WritePropertySet(Choices choices) { return PropertySetWriter(choices).Write(); }

}  // namespace fuzz
