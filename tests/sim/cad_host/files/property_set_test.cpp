// The file as other programs see it: a compound file with the standard user-defined property set.
#include <windows.h>

#include <ole2.h>

#include "host_fixture.h"

namespace {

_COM_SMARTPTR_TYPEDEF(IStorage, IID_IStorage);
_COM_SMARTPTR_TYPEDEF(IPropertySetStorage, IID_IPropertySetStorage);
_COM_SMARTPTR_TYPEDEF(IPropertyStorage, IID_IPropertyStorage);

constexpr FMTID kUserDefined = {0xd5cdd505, 0x2e9c, 0x101b, {0x93, 0x97, 0x08, 0x00, 0x2b, 0x2c, 0xf9, 0xae}};

class PropertySetTest : public HostTest {
 protected:
  IPropertyStoragePtr OpenSet(const std::wstring& path) {
    EXPECT_EQ(StgOpenStorageEx(path.c_str(), STGM_READWRITE | STGM_SHARE_EXCLUSIVE, STGFMT_STORAGE, 0,
                               nullptr, nullptr, IID_PPV_ARGS(&m_storage)),
              S_OK);
    const IPropertySetStoragePtr sets(m_storage);
    IPropertyStoragePtr set;
    m_opened = sets->Open(kUserDefined, STGM_READWRITE | STGM_SHARE_EXCLUSIVE, &set);
    return set;
  }

  static PROPSPEC Named(const wchar_t* name) {
    PROPSPEC spec{};
    spec.ulKind = PRSPEC_LPWSTR;
    spec.lpwstr = const_cast<wchar_t*>(name);
    return spec;
  }

  IStoragePtr m_storage;
  HRESULT m_opened = S_OK;
};

TEST_F(PropertySetTest, HasThePropertiesUnderTheirNames) {
  cad_host::ModelFile model;
  model.properties = {
      {L"材料", L"钢"}, {L"Count", L"12", swCustomInfoNumber}, {L"Day", L"2024-05-31", swCustomInfoDate}};
  const IPropertyStoragePtr set = OpenSet(MakeFile(L"bolt.sldprt", model));
  ASSERT_TRUE(set);
  const PROPSPEC names[] = {Named(L"材料"), Named(L"Count"), Named(L"Day")};
  PROPVARIANT values[3] = {};
  ASSERT_EQ(set->ReadMultiple(3, names, values), S_OK);
  EXPECT_EQ(values[0].vt, VT_LPWSTR);
  EXPECT_STREQ(values[0].pwszVal, L"钢");
  EXPECT_EQ(values[1].vt, VT_I4);
  EXPECT_EQ(values[1].lVal, 12);
  EXPECT_EQ(values[2].vt, VT_FILETIME);
  FreePropVariantArray(3, values);
}

TEST_F(PropertySetTest, IsMissingWithoutProperties) {
  EXPECT_FALSE(OpenSet(MakePart(L"bolt.sldprt")));
  EXPECT_EQ(m_opened, STG_E_FILENOTFOUND);
}

TEST_F(PropertySetTest, ReadsWhatAnotherProgramWrote) {
  cad_host::ModelFile model;
  model.properties = {{L"Name", L"bolt"}};
  const std::wstring path = MakeFile(L"bolt.sldprt", model);
  IPropertyStoragePtr set = OpenSet(path);
  ASSERT_TRUE(set);
  const PROPSPEC names[] = {Named(L"Narrow"), Named(L"Number")};
  PROPVARIANT values[2] = {};
  values[0].vt = VT_LPSTR;
  values[0].pszVal = const_cast<char*>("plain");
  values[1].vt = VT_I4;
  values[1].lVal = 7;
  ASSERT_EQ(set->WriteMultiple(2, names, values, PID_FIRST_USABLE), S_OK);
  ASSERT_EQ(set->Commit(STGC_DEFAULT), S_OK);
  set = nullptr;
  m_storage = nullptr;

  const auto document = Host().Open(path);
  ASSERT_EQ(document->model.properties.size(), 3u);
  EXPECT_EQ(document->model.properties[1].text, L"plain");
  EXPECT_EQ(document->model.properties[2].text, L"7");
  EXPECT_EQ(document->model.properties[2].type, swCustomInfoNumber);
}

TEST_F(PropertySetTest, ReadsBackTheTextsAsTheyWereTyped) {
  const cad_host::CustomProperties typed = {{L"Name", L"12"},
                                            {L"Whole", L"-12", swCustomInfoNumber},
                                            {L"Padded", L"007", swCustomInfoNumber},
                                            {L"Large", L"99999999999", swCustomInfoNumber},
                                            {L"Fraction", L"1.5", swCustomInfoNumber},
                                            {L"With zero", L"1.50", swCustomInfoNumber},
                                            {L"Power", L"1e3", swCustomInfoNumber},
                                            {L"Infinite", L"1e999", swCustomInfoNumber},
                                            {L"No number", L"", swCustomInfoNumber},
                                            {L"Mass", L"\"SW-Mass@bolt.SLDPRT\"", swCustomInfoNumber},
                                            {L"Yes", L"Yes", swCustomInfoYesOrNo},
                                            {L"No", L"no", swCustomInfoYesOrNo},
                                            {L"Neither", L"", swCustomInfoYesOrNo},
                                            {L"Day", L"2024-05-31", swCustomInfoDate},
                                            {L"Short", L"2024-5-1", swCustomInfoDate},
                                            {L"No day", L"", swCustomInfoDate}};
  cad_host::ModelFile model;
  model.properties = typed;
  const auto read = cad_host::ReadModelFile(MakeFile(L"bolt.sldprt", model)).properties;
  ASSERT_EQ(read.size(), typed.size());
  for (std::size_t index = 0; index < typed.size(); ++index) {
    EXPECT_EQ(read[index].name, typed[index].name);
    EXPECT_EQ(read[index].text, typed[index].text);
    EXPECT_EQ(read[index].type, typed[index].type) << testing::PrintToString(typed[index].name);
  }
}

TEST_F(PropertySetTest, ReadsTheValueThatAnotherProgramChanged) {
  cad_host::ModelFile model;
  model.properties = {{L"Changed", L"007", swCustomInfoNumber}, {L"Kept", L"008", swCustomInfoNumber}};
  const std::wstring path = MakeFile(L"bolt.sldprt", model);
  IPropertyStoragePtr set = OpenSet(path);
  ASSERT_TRUE(set);
  const PROPSPEC name = Named(L"Changed");
  PROPVARIANT value{};
  value.vt = VT_I4;
  value.lVal = 9;
  ASSERT_EQ(set->WriteMultiple(1, &name, &value, PID_FIRST_USABLE), S_OK);
  ASSERT_EQ(set->Commit(STGC_DEFAULT), S_OK);
  set = nullptr;
  m_storage = nullptr;

  const auto read = cad_host::ReadModelFile(path).properties;
  ASSERT_EQ(read.size(), 2u);
  EXPECT_EQ(read[0].text, L"9");
  EXPECT_EQ(read[1].text, L"008");
}

}  // namespace
