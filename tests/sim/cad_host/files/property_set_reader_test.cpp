// The user-defined section of a property set stream, byte by byte: what other programs write, and damaged
// streams.
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "case_name.h"
#include "files/property_set_format.h"
#include "files/property_set_reader.h"

namespace {

using namespace cad_host;
using namespace cad_host::property_set;

constexpr std::uint16_t kLatin1 = 28591;

/// Latin-1, and "?" for the bytes of any other code page.
std::wstring DecodeLatin1(std::string_view bytes, unsigned code_page) {
  std::wstring text;
  for (const char byte : bytes) {
    text += code_page == kLatin1 || byte == 0 ? static_cast<wchar_t>(static_cast<unsigned char>(byte)) : L'?';
  }
  return text;
}

template <class T>
std::string BytesOf(T value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

std::string Number(std::uint32_t value) { return BytesOf(value); }

std::string Wide(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) bytes += BytesOf(unit);
  return bytes;
}

/// A stream with one section. Its property kFirstId has the name `name` and the value `value`.
std::string StreamWith(std::uint16_t code_page, const std::string& name, std::uint32_t name_length,
                       const std::string& value) {
  const std::string dictionary = Number(1) + Number(kFirstId) + Number(name_length) + name;
  const std::string page = Number(kTypeShort) + BytesOf(code_page) + std::string(2, '\0');
  const std::uint32_t values = kPropertyPlaces + 3 * kPropertyPlaceSize;
  const auto page_place = values + static_cast<std::uint32_t>(dictionary.size());
  const auto value_place = page_place + static_cast<std::uint32_t>(page.size());
  const std::string section = Number(0) + Number(3) + Number(kDictionaryId) + Number(values) +
                              Number(kCodePageId) + Number(page_place) + Number(kFirstId) +
                              Number(value_place) + dictionary + page + value;
  const std::string id(kUserDefined.begin(), kUserDefined.end());
  return std::string(kSectionCount, '\0') + Number(1) + id + Number(48) + section;
}

std::string StreamWith(const std::string& value) {
  return StreamWith(kLatin1, std::string("N\0", 2), 2, value);
}

CustomProperties Read(const std::string& stream) { return ReadUserDefinedSections(stream, DecodeLatin1); }

struct ValueCase {
  const char* name;
  std::string bytes;
  std::wstring text;
  swCustomInfoType_e type;
};

void PrintTo(const ValueCase& value, std::ostream* stream) { *stream << value.name; }

const ValueCase kValues[] = {
    {"Text", Number(kTypeText) + Number(4) + std::string("st\xFC\0", 4), L"st\u00FC", swCustomInfoText},
    {"TextWithoutTerminatingNull", Number(kTypeText) + Number(2) + "ab", L"ab", swCustomInfoText},
    {"WideText", Number(kTypeWideText) + Number(3) + Wide(std::u16string_view(u"\u94A2x\0", 3)), L"\u94A2x",
     swCustomInfoText},
    {"Number", Number(kTypeNumber) + Number(static_cast<std::uint32_t>(-12)), L"-12", swCustomInfoNumber},
    {"Fraction", Number(kTypeDouble) + BytesOf(0.5), L"0.5", swCustomInfoNumber},
    {"Date", Number(kTypeFileTime) + BytesOf(std::uint64_t{133'615'872'000'000'000}), L"2024-05-31",
     swCustomInfoDate},
    {"FirstDay", Number(kTypeFileTime) + BytesOf(std::uint64_t{0}), L"1601-01-01", swCustomInfoDate},
    {"InvalidDay", Number(kTypeFileTime) + BytesOf(~std::uint64_t{0}), L"0000-00-00", swCustomInfoDate},
    {"Yes", Number(kTypeBool) + BytesOf(std::uint16_t{0xFFFF}), L"Yes", swCustomInfoYesOrNo},
    {"No", Number(kTypeBool) + BytesOf(std::uint16_t{0}), L"No", swCustomInfoYesOrNo},
    {"OtherType", Number(99), L"", swCustomInfoText},
};

class PropertyValue : public testing::TestWithParam<ValueCase> {};

TEST_P(PropertyValue, ReadsAsItsText) {
  const CustomProperties properties = Read(StreamWith(GetParam().bytes));

  ASSERT_EQ(properties.size(), 1u);
  EXPECT_EQ(properties[0].name, L"N");
  EXPECT_EQ(properties[0].text, GetParam().text);
  EXPECT_EQ(properties[0].type, GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(, PropertyValue, testing::ValuesIn(kValues), CaseName<ValueCase>);

TEST(PropertyNames, AreWideInAUtf16Set) {
  const std::string name = Wide(std::u16string_view(u"\u6750\u6599\0", 3)) + std::string(2, '\0');
  const CustomProperties properties = Read(StreamWith(kUtf16, name, 3, Number(kTypeNumber) + Number(1)));

  ASSERT_EQ(properties.size(), 1u);
  EXPECT_EQ(properties[0].name, L"\u6750\u6599");
}

TEST(PropertySetStream, HasNoPropertiesIfItIsEmpty) { EXPECT_TRUE(Read("").empty()); }

TEST(PropertySetStream, HasNoPropertiesIfItHasOnlyOtherSections) {
  std::string stream = StreamWith(Number(kTypeNumber) + Number(1));
  stream[kSectionPlaces] = 'x';

  EXPECT_TRUE(Read(stream).empty());
}

TEST(PropertySetStream, IsRefusedIfItIsCutOff) {
  const std::string whole =
      StreamWith(Number(kTypeWideText) + Number(2) + Wide(std::u16string_view(u"a\0", 2)));
  ASSERT_EQ(Read(whole).size(), 1u);

  int refused = 0;
  for (std::size_t size = 1; size < whole.size(); ++size) {
    try {
      EXPECT_LE(Read(whole.substr(0, size)).size(), 1u);
    } catch (const std::out_of_range&) {
      ++refused;
    }
  }

  EXPECT_EQ(refused, static_cast<int>(whole.size()) - 1);
}

}  // namespace
