// Custom properties through the host's interfaces and in the file.
#include <utility>

#include "host/custom_properties.h"
#include "host/model_doc.h"
#include "host_fixture.h"

namespace {

using cad_host::CustomProperties;
using cad_host::ModelFile;

// What Set returns.
constexpr long kSet = 0;
constexpr long kNotPresent = 1;
constexpr long kTypeMismatch = 2;

const CustomProperties kProperties = {{L"Name", L"螺栓 \\ \"M8\""},
                                      {L"Weight", L"\"SW-Mass@bolt.SLDPRT\""},
                                      {L"Count", L"12", swCustomInfoNumber},
                                      {L"Length", L"0.125", swCustomInfoNumber},
                                      {L"Released", L"2024-05-31", swCustomInfoDate},
                                      {L"Checked", L"Yes", swCustomInfoYesOrNo}};

class PropertiesTest : public HostTest {
 protected:
  std::shared_ptr<cad_host::Document> Open(const ModelFile& model) {
    return Host().Open(MakeFile(L"bolt.sldprt", model));
  }
  std::shared_ptr<cad_host::Document> OpenWithProperties() {
    ModelFile model;
    model.properties = kProperties;
    model.configurations[L"Long"] = {{L"OnlyLong", L"1"}};
    model.quantities[L"SW-Mass"] = L"1.25";
    return Open(model);
  }

  ICustomPropertyManagerPtr Manager(const std::wstring& configuration = {}) {
    IModelDoc2Ptr document;
    Host().Application()->get_IActiveDoc2(&document);
    IModelDocExtensionPtr extension;
    document->get_Extension(&extension);
    ICustomPropertyManagerPtr manager;
    EXPECT_EQ(extension->get_CustomPropertyManager(CComBSTR(configuration), &manager), S_OK);
    return manager;
  }

  long Set(const std::wstring& name, const std::wstring& value, HRESULT expected = S_OK) {
    long status = 99;
    EXPECT_EQ(Manager()->Set(CComBSTR(name), CComBSTR(value), &status), expected);
    return status;
  }

  using Values = std::pair<std::wstring, std::wstring>;  // as typed, and resolved
  Values Get2(const std::wstring& name) {
    CComBSTR text;
    CComBSTR resolved;
    EXPECT_EQ(Manager()->Get2(CComBSTR(name), &text, &resolved), S_OK);
    return {std::wstring(text.View()), std::wstring(resolved.View())};
  }
};

std::vector<std::wstring> TextsOf(const _variant_t& array) {
  EXPECT_EQ(array.vt, VT_ARRAY | VT_BSTR);
  BSTR* texts = nullptr;
  EXPECT_EQ(SafeArrayAccessData(array.parray, reinterpret_cast<void**>(&texts)), S_OK);
  std::vector<std::wstring> result(texts, texts + array.parray->rgsabound[0].cElements);
  SafeArrayUnaccessData(array.parray);
  return result;
}

TEST_F(PropertiesTest, EnumeratesNamesTypesAndValues) {
  OpenWithProperties();
  _variant_t names;
  _variant_t types;
  _variant_t values;
  long count = 0;
  ASSERT_EQ(Manager()->GetAll(&names, &types, &values, &count), S_OK);
  EXPECT_EQ(count, 6);
  EXPECT_EQ(TextsOf(names),
            (std::vector<std::wstring>{L"Name", L"Weight", L"Count", L"Length", L"Released", L"Checked"}));
  EXPECT_EQ(TextsOf(values)[4], L"2024-05-31");
  ASSERT_EQ(types.vt, VT_ARRAY | VT_I4);
  const long* const numbers = static_cast<long*>(types.parray->pvData);
  EXPECT_EQ(std::vector<long>(numbers, numbers + 6),
            (std::vector<long>{swCustomInfoText, swCustomInfoText, swCustomInfoNumber, swCustomInfoNumber,
                               swCustomInfoDate, swCustomInfoYesOrNo}));
  _variant_t only_names;
  EXPECT_EQ(Manager()->GetNames(&only_names), S_OK);
  EXPECT_EQ(TextsOf(only_names), TextsOf(names));
  EXPECT_EQ(Manager()->get_Count(&count), S_OK);
  EXPECT_EQ(count, 6);
}

TEST_F(PropertiesTest, ReturnsEmptyVariantsIfThereAreNoProperties) {
  Open({});
  _variant_t names(L"before");
  _variant_t types(1L);
  _variant_t values(2L);
  long count = 7;
  EXPECT_EQ(Manager()->GetAll(&names, &types, &values, &count), S_OK);
  EXPECT_EQ(names.vt, VT_EMPTY);
  EXPECT_EQ(types.vt, VT_EMPTY);
  EXPECT_EQ(values.vt, VT_EMPTY);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(Manager()->GetNames(&names), S_OK);
  EXPECT_EQ(names.vt, VT_EMPTY);
}

TEST_F(PropertiesTest, ResolvesExpressions) {
  OpenWithProperties();
  EXPECT_EQ(Get2(L"Weight"), (Values{L"\"SW-Mass@bolt.SLDPRT\"", L"1.25"}));
  EXPECT_EQ(Get2(L"name"), (Values{kProperties[0].text, kProperties[0].text})) << "the expression is unknown";
  EXPECT_EQ(Set(L"Name", L"about \"SW-Mass@x\" kg, \"SW-Volume@x\" l"), kSet);
  EXPECT_EQ(Get2(L"Name").second, L"about 1.25 kg, \"SW-Volume@x\" l");
}

TEST_F(PropertiesTest, Get3ReturnsWhetherThePropertyExists) {
  OpenWithProperties();
  CComBSTR text;
  CComBSTR resolved;
  VARIANT_BOOL found = VARIANT_FALSE;
  EXPECT_EQ(Manager()->Get3(CComBSTR(L"Weight"), VARIANT_TRUE, &text, &resolved, &found), S_OK);
  EXPECT_EQ(found, VARIANT_TRUE);
  EXPECT_EQ(resolved.View(), L"1.25");
  EXPECT_EQ(Manager()->Get3(CComBSTR(L"Nothing"), VARIANT_TRUE, &text, &resolved, &found), S_OK);
  EXPECT_EQ(found, VARIANT_FALSE);
  EXPECT_EQ(text.View(), L"");
}

TEST_F(PropertiesTest, SetsOnlyExistingPropertiesToTextsThatFit) {
  const auto document = OpenWithProperties();
  EXPECT_EQ(Set(L"Nothing", L"x"), kNotPresent);
  EXPECT_EQ(Set(L"Count", L"many"), kTypeMismatch);
  EXPECT_EQ(Set(L"Checked", L"perhaps"), kTypeMismatch);
  EXPECT_EQ(Set(L"Released", L"tomorrow"), kTypeMismatch);
  EXPECT_FALSE(document->changed);
  EXPECT_EQ(Set(L"Count", L"13"), kSet);
  EXPECT_EQ(Set(L"Length", L"\"SW-Length@x\""), kSet);
  EXPECT_EQ(Set(L"Checked", L"no"), kSet);
  EXPECT_EQ(Set(L"Name", L""), kSet);
  EXPECT_TRUE(document->changed);
  EXPECT_EQ(Get2(L"Count").first, L"13");
  EXPECT_EQ(document->model.properties.size(), kProperties.size());
}

TEST_F(PropertiesTest, RefusesToSetPropertiesOfAReadOnlyDocument) {
  const auto document = OpenWithProperties();
  document->read_only = true;
  Set(L"Name", L"x", E_ACCESSDENIED);
  document->read_only = false;
  document->view_only = true;
  Set(L"Name", L"x", E_ACCESSDENIED);
  EXPECT_EQ(Get2(L"Name").first, kProperties[0].text);
}

TEST_F(PropertiesTest, ConfigurationsHaveTheirOwnProperties) {
  OpenWithProperties();
  long count = 0;
  Manager(L"Long")->get_Count(&count);
  EXPECT_EQ(count, 1);
  EXPECT_EQ(Get2(L"OnlyLong").first, L"") << "not a property of the document";
  EXPECT_FALSE(Manager(L"Short")) << "no such configuration";
}

TEST_F(PropertiesTest, SavingWritesThePropertiesToTheFile) {
  const auto document = OpenWithProperties();
  EXPECT_EQ(cad_host::ReadModelFile(document->path).properties[0].text, kProperties[0].text);
  Set(L"Name", L"nut");
  Set(L"Count", L"-3");
  EXPECT_EQ(cad_host::ReadModelFile(document->path).properties[0].text, kProperties[0].text);
  Host().Save(*document);
  const ModelFile saved = cad_host::ReadModelFile(document->path);
  ASSERT_EQ(saved.properties.size(), kProperties.size());
  for (std::size_t index = 0; index < saved.properties.size(); ++index) {
    EXPECT_EQ(saved.properties[index].name, kProperties[index].name);
    EXPECT_EQ(saved.properties[index].type, kProperties[index].type) << index;
  }
  EXPECT_EQ(saved.properties[0].text, L"nut");
  EXPECT_EQ(saved.properties[1].text, kProperties[1].text);
  EXPECT_EQ(saved.properties[2].text, L"-3");
  EXPECT_EQ(saved.properties[3].text, L"0.125");
  EXPECT_EQ(saved.properties[4].text, L"2024-05-31");
  EXPECT_EQ(saved.properties[5].text, L"Yes");
  EXPECT_EQ(saved.configurations.at(L"Long").at(0).name, L"OnlyLong");
  EXPECT_EQ(saved.quantities.at(L"SW-Mass"), L"1.25");
}

}  // namespace
