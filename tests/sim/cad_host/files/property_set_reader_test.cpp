// The user-defined section of a property set stream, byte by byte: what other programs write, and damaged
// streams.
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "case_name.h"
#include "files/property_set_reader.h"
#include "property_set_stream.h"

namespace {

using namespace cad_host;
using namespace cad_host::property_set;

/// A stream with the property kFirstId, which has the name "N".
std::string StreamWith(const std::string& value) {
  return StreamOf({{kDictionaryId, Dictionary({{kFirstId, Name("N")}})},
                   {kCodePageId, CodePageValue(kLatin1)},
                   {kFirstId, value}});
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
  const std::string name = WideName(u"\u6750\u6599");
  const CustomProperties properties = Read(StreamOf({{kDictionaryId, WideDictionary({{kFirstId, name}})},
                                                     {kCodePageId, CodePageValue(kUtf16)},
                                                     {kFirstId, Number(kTypeNumber) + Number(1)}}));

  ASSERT_EQ(properties.size(), 1u);
  EXPECT_EQ(properties[0].name, L"\u6750\u6599");
}

TEST(PropertyNames, OfReservedIdsAreNoProperties) {
  const CustomProperties properties =
      Read(StreamOf({{kDictionaryId, Dictionary({{kDictionaryId, Name("D")}, {kCodePageId, Name("C")}})},
                     {kCodePageId, CodePageValue(kLatin1)}}));

  EXPECT_TRUE(properties.empty());
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
