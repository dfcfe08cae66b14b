// Changes in property sets of other programs, byte by byte.
#include "files/property_set_editor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "case_name.h"
#include "files/property_set_reader.h"
#include "property_set_stream.h"

namespace {

using namespace cad_host;
using namespace cad_host::property_set;

constexpr std::uint16_t kUnknownPage = 932;
constexpr std::uint32_t kProperty = 9;

std::string NumberValue(std::uint32_t value) { return Number(kTypeNumber) + Number(value); }

CustomProperties Read(const std::string& stream) { return ReadUserDefinedSections(stream, DecodeLatin1); }

std::string Edit(const std::string& stream, const CustomProperties& properties) {
  return EditUserDefinedSections(stream, properties, DecodeLatin1, EncodeLatin1);
}

/// The stream with one property more, "Added".
std::string WithAdded(const std::string& stream) {
  CustomProperties properties = Read(stream);
  properties.push_back({.name = L"Added", .text = L"1", .type = swCustomInfoNumber});
  return Edit(stream, properties);
}

/// The stream with the first property set to `text`.
std::string WithFirstText(const std::string& stream, const std::wstring& text) {
  CustomProperties properties = Read(stream);
  properties.at(0).text = text;
  return Edit(stream, properties);
}

/// The stream without its first property.
std::string WithoutFirst(const std::string& stream) {
  CustomProperties properties = Read(stream);
  properties.erase(properties.begin());
  return Edit(stream, properties);
}

/// A stream with the property kProperty, which has the name "N", and with other values after it.
std::string StreamWith(const std::string& value, const ById& others = {}) {
  ById values = {{kDictionaryId, Dictionary({{kProperty, Name("N")}})},
                 {kCodePageId, CodePageValue(kLatin1)},
                 {kProperty, value}};
  values.insert(values.end(), others.begin(), others.end());
  return StreamOf(values);
}

/// The id of the property "Added".
std::uint32_t IdOfAdded(const std::string& stream) {
  const std::string names = ValuesOf(stream).at(kDictionaryId);
  const std::size_t place = names.find(Name("Added"));
  if (place == std::string::npos) throw std::runtime_error("no such name");
  std::uint32_t id = 0;
  std::copy_n(names.begin() + static_cast<std::ptrdiff_t>(place - 2 * sizeof id), sizeof id,
              reinterpret_cast<char*>(&id));
  return id;
}

TEST(EditedNames, KeepTheirBytesIfAnotherIsAdded) {
  const std::string stream =
      StreamOf({{kDictionaryId, Dictionary({{3, Name("Bad\x81")}, {2, Name("Plain")}})},
                {kCodePageId, CodePageValue(kUnknownPage)},
                {2, NumberValue(2)},
                {3, NumberValue(3)}});

  const auto values = ValuesOf(WithAdded(stream));

  EXPECT_TRUE(values.at(kDictionaryId)
                  .starts_with(Dictionary({{3, Name("Bad\x81")}, {2, Name("Plain")}, {4, Name("Added")}})))
      << testing::PrintToString(values.at(kDictionaryId));
}

TEST(EditedNames, KeepTheirBytesIfAnotherIsRemoved) {
  const std::string stream =
      StreamOf({{kDictionaryId, Dictionary({{3, Name("Bad\x81")}, {2, Name("Plain")}})},
                {kCodePageId, CodePageValue(kUnknownPage)},
                {2, NumberValue(2)},
                {3, NumberValue(3)}});

  const auto values = ValuesOf(WithoutFirst(stream));

  EXPECT_TRUE(values.at(kDictionaryId).starts_with(Dictionary({{3, Name("Bad\x81")}})));
  EXPECT_FALSE(values.contains(2));
}

TEST(EditedNames, ArePaddedInAUtf16SetWhoseLastNameIsNot) {
  const ById names = {{2, WideName(u"材料")}};
  const std::string padded = WideDictionary(names);
  const std::string stream = StreamOf({{kCodePageId, CodePageValue(kUtf16)},
                                       {2, NumberValue(2)},
                                       {kDictionaryId, padded.substr(0, padded.size() - 2)}});

  const std::string edited = WithAdded(stream);

  EXPECT_EQ(ValuesOf(edited).at(kDictionaryId), WideDictionary({names[0], {3, WideName(u"Added")}}));
  EXPECT_EQ(Read(edited).size(), 2u);
}

TEST(EditedNames, ANewOneThatTheCodePageCannotSpellIsRefused) {
  CustomProperties properties = Read(StreamWith(NumberValue(1)));
  properties.push_back({.name = L"材料", .text = L"钢"});

  try {
    Edit(StreamWith(NumberValue(1)), properties);
    ADD_FAILURE() << "edited";
  } catch (const UnspellableName& failure) {
    EXPECT_EQ(failure.name, L"材料");
    EXPECT_EQ(failure.code_page, kLatin1);
  }
}

TEST(EditedIds, ANewOneIsNotThatOfALink) {
  const std::string link = Number(kTypeText) + Number(4) + "bkm";
  const std::string stream = StreamWith(NumberValue(1), {{kProperty | kLinkBit, link + '\0'}});

  const std::string edited = WithAdded(stream);

  EXPECT_EQ(IdOfAdded(edited), kProperty + 1);
  EXPECT_EQ(ValuesOf(edited).at(kProperty | kLinkBit), link + '\0');
}

TEST(EditedIds, ANewOneIsNotAfterReservedOnesWithANameOrAValue) {
  const std::string stream =
      StreamOf({{kDictionaryId, Dictionary({{kProperty, Name("N")}, {0x80000005, Name("R")}})},
                {kCodePageId, CodePageValue(kLatin1)},
                {kProperty, NumberValue(1)},
                {0x80000000, Number(kTypeUnsigned) + Number(0x407)}});

  EXPECT_EQ(IdOfAdded(WithAdded(stream)), kProperty + 1);
}

TEST(EditedIds, ANewOneIsBelowThoseOfLinksIfTheLastIsTaken) {
  const std::string stream = StreamWith(NumberValue(1), {{kLinkBit - 1, NumberValue(2)}});

  EXPECT_EQ(IdOfAdded(WithAdded(stream)), kFirstId);
}

TEST(EditedIds, TheLinkOfARemovedPropertyIsRemoved) {
  const std::string stream =
      StreamWith(NumberValue(1), {{kProperty | kLinkBit, NumberValue(2)}, {10 | kLinkBit, NumberValue(3)}});

  const auto values = ValuesOf(WithoutFirst(stream));

  EXPECT_FALSE(values.contains(kProperty));
  EXPECT_FALSE(values.contains(kProperty | kLinkBit));
  EXPECT_TRUE(values.contains(10 | kLinkBit)) << "of another property";
}

TEST(EditedIds, APropertyWithTheIdOfALinkStays) {
  const std::string stream =
      StreamOf({{kDictionaryId, Dictionary({{2, Name("First")}, {2 | kLinkBit, Name("Second")}})},
                {kCodePageId, CodePageValue(kLatin1)},
                {2, NumberValue(1)},
                {2 | kLinkBit, NumberValue(2)}});

  const CustomProperties left = Read(WithoutFirst(stream));

  ASSERT_EQ(left.size(), 1u);
  EXPECT_EQ(left[0].name, L"Second");
}

struct ChangeCase {
  const char* name;
  std::string old_value;
  std::wstring text;
  std::string new_value;
};

void PrintTo(const ChangeCase& change, std::ostream* stream) { *stream << change.name; }

std::string ShortValue(std::int16_t value) {
  return Number(kTypeShort) + BytesOf(value) + std::string(2, '\0');
}
std::string LongValue(std::int64_t value) { return Number(kTypeLongNumber) + BytesOf(value); }
std::string UnsignedValue(std::uint32_t value) { return Number(kTypeUnsigned) + Number(value); }
std::string DoubleValue(double value) { return Number(kTypeDouble) + BytesOf(value); }
std::string DateValue(std::uint64_t value) { return Number(kTypeFileTime) + BytesOf(value); }

constexpr std::uint64_t kLastDayOfMay = 133'615'872'000'000'000;  // 2024-05-31
constexpr std::uint64_t kDay = 864'000'000'000;

const ChangeCase kChanges[] = {
    {"LongNumberKeepsItsDigits", LongValue(9007199254740993), L"9007199254740995",
     LongValue(9007199254740995)},
    {"LongNumberByOne", LongValue(9007199254740993), L"9007199254740992", LongValue(9007199254740992)},
    {"SmallestLongNumber", LongValue(1), L"-9223372036854775808", LongValue(INT64_MIN)},
    {"Short", ShortValue(7), L"-32768", ShortValue(INT16_MIN)},
    {"TooLargeForShort", ShortValue(7), L"32768", NumberValue(32768)},
    {"Unsigned", UnsignedValue(7), L"4294967295", UnsignedValue(UINT32_MAX)},
    {"NegativeForUnsigned", UnsignedValue(7), L"-1", NumberValue(UINT32_MAX)},
    {"TooLargeForNumber", NumberValue(7), L"2147483648", DoubleValue(2147483648)},
    {"FractionForLongNumber", LongValue(7), L"1.5", DoubleValue(1.5)},
    {"WholeForFraction", DoubleValue(1.5), L"2", DoubleValue(2)},
    {"OtherSpelling", DoubleValue(1.5), L"1.50", DoubleValue(1.5)},
    {"OtherSpellingOfShort", ShortValue(7), L"007", ShortValue(7)},
    {"DateIsTheStartOfItsDay", DateValue(kLastDayOfMay + 1), L"2024-06-01", DateValue(kLastDayOfMay + kDay)},
    {"SameDateKeepsItsTime", DateValue(kLastDayOfMay + 1), L"2024-05-31", DateValue(kLastDayOfMay + 1)},
    {"OtherSpellingOfADateKeepsItsTime", DateValue(kLastDayOfMay + 1), L"2024-5-31",
     DateValue(kLastDayOfMay + 1)},
    {"Text", Number(kTypeText) + Number(4) + Name("abc"), L"st\u00FC",
     Number(kTypeText) + Number(4) + Name("st\xFC")},
    {"TextThatThePageCannotSpell", Number(kTypeText) + Number(4) + Name("abc"), L"材",
     Number(kTypeWideText) + Number(2) + WideName(u"材")},
};

TEST(EditedStream, ChangesTheFirstOfEqualNamesByIdWhereverItsValueLies) {
  const std::string name = Name("N");
  const std::string stream = StreamOf({{kDictionaryId, Dictionary({{kFirstId, name}, {kFirstId + 1, name}})},
                                       {kCodePageId, CodePageValue(kLatin1)},
                                       {kFirstId + 1, NumberValue(2)},
                                       {kFirstId, NumberValue(1)}});
  ASSERT_EQ(Read(stream).front().text, L"1");

  const CustomProperties read =
      Read(Edit(stream, {{.name = L"N", .text = L"3", .type = swCustomInfoNumber}}));

  ASSERT_EQ(read.size(), 1u);
  EXPECT_EQ(read.front().text, L"3");
}

TEST(EditedStream, IsRefusedIfAValueBeginsInsideAnother) {
  const std::string whole = StreamOf({{kDictionaryId, Dictionary({{kFirstId, Name("N")}})},
                                      {kCodePageId, CodePageValue(kLatin1)},
                                      {kFirstId, Number(kTypeDouble) + BytesOf(0.5)},
                                      {kFirstId + 1, Number(kTypeNumber) + Number(1)}});
  const CustomProperties changed = {{.name = L"N", .text = L"1.5", .type = swCustomInfoNumber}};
  const CustomProperties added = {{.name = L"N", .text = L"0.5", .type = swCustomInfoNumber},
                                  {.name = L"added", .text = L"x"}};
  const auto edit_moved = [&](std::size_t value, const CustomProperties& wanted) {
    std::string stream = whole;
    stream[kSectionPlaces + kSectionPlaceSize + kPropertyPlaces + value * kPropertyPlaceSize +
           sizeof(std::uint32_t)] -= 4;
    return Edit(stream, wanted);
  };
  EXPECT_NO_THROW(Edit(whole, changed));
  EXPECT_NO_THROW(Edit(whole, added));

  EXPECT_THROW(edit_moved(1, changed), std::out_of_range) << "inside the dictionary";
  EXPECT_THROW(edit_moved(2, added), std::out_of_range) << "inside the code page";
  EXPECT_THROW(edit_moved(3, added), std::out_of_range) << "inside the fraction";
}

class EditedValue : public testing::TestWithParam<ChangeCase> {};

TEST_P(EditedValue, BecomesThis) {
  const std::string edited = WithFirstText(StreamWith(GetParam().old_value), GetParam().text);

  const std::string value = ValuesOf(edited).at(kProperty);
  EXPECT_EQ(value, GetParam().new_value) << testing::PrintToString(value);
}

INSTANTIATE_TEST_SUITE_P(, EditedValue, testing::ValuesIn(kChanges), CaseName<ChangeCase>);

}  // namespace
