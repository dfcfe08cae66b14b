// Edited property sets keep what this host does not know: other sections and other types of values.
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "files/property_set_editor.h"
#include "files/property_set_reader.h"
#include "files/property_set_section.h"
#include "property_set_stream.h"

namespace {

using namespace cad_host;
using namespace cad_host::property_set;

/// {D5CDD502-2E9C-101B-9397-08002B2CF9AE}: the section of the other properties in the same stream.
constexpr SectionId kDocumentSummary = {0x02, 0xd5, 0xcd, 0xd5, 0x9c, 0x2e, 0x1b, 0x10,
                                        0x93, 0x97, 0x08, 0x00, 0x2b, 0x2c, 0xf9, 0xae};

// Types that this host does not read.
constexpr std::uint32_t kTypeFloat = 4;
constexpr std::uint32_t kTypeDate = 7;
constexpr std::uint32_t kTypeUnsignedLong = 21;
constexpr std::uint32_t kTypeClipboard = 71;
constexpr std::uint32_t kTypeVectorOfTexts = 0x101E;
constexpr std::uint32_t kLanguageId = 0x80000000;

CustomProperties Read(const std::string& stream) { return ReadUserDefinedSections(stream, DecodeLatin1); }

std::string Edit(const std::string& stream, const CustomProperties& properties) {
  return EditUserDefinedSections(stream, properties, DecodeLatin1, EncodeLatin1);
}

const ById kWideNames = {{2, WideName(u"Changed")},   {3, WideName(u"Removed")},     {4, WideName(u"Vector")},
                         {5, WideName(u"Clipboard")}, {6, WideName(u"Long")},        {7, WideName(u"Float")},
                         {8, WideName(u"Date")},      {9, WideName(u"UnsignedLong")}};

/// Values that no edit touches.
const ById kForeign = {{kLanguageId, Number(kTypeUnsigned) + Number(0x804)},
                       {4, Number(kTypeVectorOfTexts) + Number(2) + Number(4) + Wide(u"a") +
                               std::string(2, '\0') + Number(2) + std::string(4, '\0')},
                       {5, Number(kTypeClipboard) + Number(8) + Number(0xFFFFFFFF) + Number(3)},
                       {6, Number(kTypeLongNumber) + BytesOf(std::int64_t{9007199254740993})},
                       {7, Number(kTypeFloat) + BytesOf(1.5F)},
                       {8, Number(kTypeDate) + BytesOf(45443.5)},
                       {9, Number(kTypeUnsignedLong) + BytesOf(~std::uint64_t{0})}};

/// A UTF-16 set with every kind of value.
std::string WideStream() {
  ById values = {{kDictionaryId, WideDictionary(kWideNames)},
                 {kCodePageId, CodePageValue(kUtf16)},
                 {2, Number(kTypeNumber) + Number(1)},
                 {3, Number(kTypeNumber) + Number(2)}};
  values.insert(values.end(), kForeign.begin(), kForeign.end());
  return StreamOf(values);
}

/// What a person may do to the properties of WideStream(): change, remove and add.
CustomProperties Edited(CustomProperties properties) {
  for (CustomProperty& property : properties) {
    if (property.name == L"Changed") property.text = L"13";
  }
  std::erase_if(properties, [](const CustomProperty& property) { return property.name == L"Removed"; });
  properties.push_back({.name = L"材料", .text = L"钢"});
  return properties;
}

TEST(ForeignValues, KeepTheirBytesInAnEditedUtf16Set) {
  const std::string stream = WideStream();
  ASSERT_EQ(Read(stream).size(), kWideNames.size());

  const std::string edited = Edit(stream, Edited(Read(stream)));

  const auto values = ValuesOf(edited);
  for (const auto& [id, bytes] : kForeign) EXPECT_EQ(values.at(id), bytes) << id;
  ById names = kWideNames;
  names.erase(names.begin() + 1);
  names.emplace_back(10, WideName(u"材料"));
  EXPECT_EQ(values.at(kDictionaryId), WideDictionary(names));
  EXPECT_EQ(values.at(kCodePageId), CodePageValue(kUtf16));
  EXPECT_EQ(values.at(2), Number(kTypeNumber) + Number(13));
  EXPECT_FALSE(values.contains(3));
  EXPECT_EQ(values.size(), kForeign.size() + 4);
}

TEST(ForeignSections, KeepTheirBytesIfTheUserDefinedOneIsAdded) {
  const std::string summary = SectionOf({{kCodePageId, CodePageValue(kLatin1)},
                                         {15, Number(kTypeText) + Number(4) + std::string("Co\0\0", 4)}});
  const std::string stream = StreamOf(std::vector{std::pair{kDocumentSummary, summary}});

  const std::string edited = Edit(stream, {{.name = L"Material", .text = L"钢"}});

  const auto sections = SectionsOf(edited);
  ASSERT_EQ(sections.size(), 2u);
  EXPECT_EQ(sections[0].id, kDocumentSummary);
  EXPECT_EQ(sections[0].bytes, summary);
  EXPECT_EQ(sections[1].id, kUserDefined);
  const CustomProperties read = Read(edited);
  ASSERT_EQ(read.size(), 1u);
  EXPECT_EQ(read[0].name, L"Material");
  EXPECT_EQ(read[0].text, L"钢");
}

TEST(ForeignSections, NoUserDefinedOneIsAddedForNothing) {
  const std::string stream = StreamOf(
      std::vector{std::pair{kDocumentSummary, SectionOf({{kCodePageId, CodePageValue(kLatin1)}}) + "rest"}});

  EXPECT_EQ(Edit(stream, {}), stream);
}

TEST(ForeignSections, AUserDefinedOneWithoutADictionaryGetsOne) {
  const ById values = {{kCodePageId, CodePageValue(kLatin1)}, {5, Number(kTypeNumber) + Number(7)}};
  const std::string stream = StreamOf(values);
  ASSERT_TRUE(Read(stream).empty()) << "a value without a name is no property";

  const std::string edited = Edit(stream, {{.name = L"A", .text = L"1", .type = swCustomInfoNumber}});

  const auto all = ValuesOf(edited);
  EXPECT_EQ(all.at(5), values[1].second);
  EXPECT_EQ(all.at(6), Number(kTypeNumber) + Number(1));
  const CustomProperties read = Read(edited);
  ASSERT_EQ(read.size(), 1u);
  EXPECT_EQ(read[0].name, L"A");
}

TEST(ForeignSections, KeepEveryByteWithoutAChange) {
  const std::string stream = WideStream() + "rest";

  EXPECT_EQ(Edit(stream, Read(stream)), stream);
}

/// Edits the stream like WideStream(). @return whether it was refused.
bool IsRefused(const std::string& stream) {
  try {
    Edit(stream, Edited(Read(stream)));
    return false;
  } catch (const std::out_of_range&) {
    return true;
  } catch (const UnspellableName&) {  // of a damaged code page
    return true;
  }
}

TEST(DamagedSet, IsRefusedIfItIsCutOff) {
  const std::string stream = WideStream();
  ASSERT_FALSE(IsRefused(stream));

  // Up to here, the places of all values; behind it, the values that a person's edit does not read.
  const std::size_t last_read = stream.rfind(kForeign[3].second);
  for (std::size_t size = 1; size < last_read + kForeign[3].second.size(); ++size) {
    EXPECT_TRUE(IsRefused(stream.substr(0, size))) << size;
  }
}

// The sanitizers of the native build see what is read beyond the end.
TEST(DamagedSet, IsReadOrRefusedWhereverAByteIsWrong) {
  const std::string stream = WideStream();
  int refused = 0;
  for (std::size_t place = 0; place < stream.size(); ++place) {
    for (const char wrong : {'\0', '\x7F', '\xFF'}) {
      std::string damaged = stream;
      damaged[place] = wrong;
      refused += IsRefused(damaged) ? 1 : 0;
    }
  }

  EXPECT_GT(refused, 0);
}

}  // namespace
