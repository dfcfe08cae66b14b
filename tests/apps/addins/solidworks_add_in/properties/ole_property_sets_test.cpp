// The simulated host's files are compatible with another implementation of OLE property sets: libgsf, which
// is independent of Wine and of this project.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "cad_host/model_file.h"
#include "list_difference.h"
#include "program_folder.h"
#include "properties_fixture.h"
#include "unix_program.h"

namespace {

class OlePropertySets : public PropertiesFixture {
 protected:
  /// What libgsf's program prints for these properties of the file: the value, after its name if there are
  /// several. Quotes, backslashes and characters outside ASCII are escaped.
  std::string PropertiesByLibgsf(const std::string& file, const std::string& names) const {
    return RunShell(m_folder, "export LC_ALL=C.UTF-8; gsf props " + file + " " + names);
  }
};

TEST_F(OlePropertySets, OfTheHostAreReadByLibgsf) {
  cad_host::ModelFile model;
  model.properties = {{.name = L"Plain", .text = L"text"},
                      {.name = L"材料", .text = L"\"SW-Mass@bolt.SLDPRT\" \\"},
                      {.name = L"Empty", .text = L""},
                      {.name = L"Whole", .text = L"12", .type = swCustomInfoNumber},
                      {.name = L"Fraction", .text = L"1.50", .type = swCustomInfoNumber},
                      {.name = L"Large", .text = L"99999999999", .type = swCustomInfoNumber},
                      {.name = L"Checked", .text = L"Yes", .type = swCustomInfoYesOrNo},
                      {.name = L"Unchecked", .text = L"no", .type = swCustomInfoYesOrNo},
                      {.name = L"Date", .text = L"2024-05-31", .type = swCustomInfoDate},
                      {.name = L"Chinese", .text = L"钢"}};
  MakeModel(L"bolt.sldprt", model);
  EXPECT_EQ(PropertiesByLibgsf("bolt.sldprt",
                               "Plain 材料 Empty Whole Fraction Large Checked Unchecked Date Chinese"),
            "Plain: \t= \"text\"\n"
            "材料: \t= \"\\\"SW-Mass@bolt.SLDPRT\\\" \\\\\"\n"
            "Empty: \t= \"\"\n"
            "Whole: \t= 12\n"
            "Fraction: \t= 1.500000\n"
            "Large: \t= 99999999999.000000\n"
            "Checked: \t= TRUE\n"
            "Unchecked: \t= FALSE\n"
            "Date: \t= 2024-05-31T00:00:00Z\n"
            "Chinese: \t= \"\\351\\222\\242\"\n");
}

TEST_F(OlePropertySets, OfAnyLengthAreReadByLibgsf) {
  for (std::size_t length = 0; length < 8; ++length) {
    cad_host::ModelFile model;
    model.properties = {{.name = std::wstring(length + 1, L'n'), .text = std::wstring(length, L't')}};
    MakeModel(L"bolt.sldprt", model);
    const std::string name(length + 1, 'n');
    EXPECT_EQ(PropertiesByLibgsf("bolt.sldprt", name), "\t= \"" + std::string(length, 't') + "\"\n");
  }
}

TEST_F(OlePropertySets, WithoutAValueOfTheirTypeAreReadByLibgsfAsText) {
  cad_host::ModelFile model;
  model.properties = {{.name = L"Number", .text = L"\"SW-Mass@bolt.SLDPRT\"", .type = swCustomInfoNumber},
                      {.name = L"Checked", .text = L"", .type = swCustomInfoYesOrNo},
                      {.name = L"Date", .text = L"", .type = swCustomInfoDate}};
  MakeModel(L"bolt.sldprt", model);
  EXPECT_EQ(PropertiesByLibgsf("bolt.sldprt", "Number Checked Date"),
            "Number: \t= \"\\\"SW-Mass@bolt.SLDPRT\\\"\"\nChecked: \t= \"\"\nDate: \t= \"\"\n");
}

TEST_F(OlePropertySets, FilledBackAndSavedAreReadByLibgsf) {
  ConnectAndLogIn();
  const auto document = OpenPartWithThree();
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"B":"steel \"S355\""}})");
  ExpectBoxes(1);
  EXPECT_EQ(Pick(L"PlmMaterialBackFill").result, S_OK);
  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "B"), "\t= \"2\"\n") << "not saved yet";
  m_host->Save(*document);
  EXPECT_EQ(PropertiesByLibgsf("part.sldprt", "A B C"),
            "A: \t= \"1\"\nB: \t= \"steel \\\"S355\\\"\"\nC: \t= \"3\"\n");
}

/// A file that libgsf wrote, with summary information and custom properties: fixtures/written_elsewhere.c.
class FileOfLibgsf : public OlePropertySets {
 protected:
  std::shared_ptr<cad_host::Document> OpenFile() {
    const std::wstring path = m_folder.Path(L"elsewhere.sldprt");
    WriteFileBytes(path, ReadFileBytes(BesideTests(L"data\\written_elsewhere.sldprt")));
    return m_host->Open(path);
  }

  static Texts Sorted(Texts texts) {
    std::sort(texts.begin(), texts.end());
    return texts;
  }
};

TEST_F(FileOfLibgsf, IsReadByTheHost) {
  EXPECT_SAME_ENTRIES(Sorted(PropertiesOf(*OpenFile())),
                      Texts{L"Checked=Yes", L"Date=2024-05-31", L"Fraction=1.5", L"Plain=text",
                            L"Weight=\"SW-Mass@bolt.SLDPRT\"", L"Whole=-12", L"材料=钢 😀 \"S355\" \\"});
}

TEST_F(FileOfLibgsf, HasItsTypesInTheHost) {
  std::map<std::wstring, swCustomInfoType_e> types;
  for (const auto& property : OpenFile()->model.properties) types[property.name] = property.type;
  EXPECT_EQ(types, (std::map<std::wstring, swCustomInfoType_e>{{L"Checked", swCustomInfoYesOrNo},
                                                               {L"Date", swCustomInfoDate},
                                                               {L"Fraction", swCustomInfoNumber},
                                                               {L"Plain", swCustomInfoText},
                                                               {L"Weight", swCustomInfoText},
                                                               {L"Whole", swCustomInfoNumber},
                                                               {L"材料", swCustomInfoText}}));
}

TEST_F(FileOfLibgsf, IsSentFilledBackSavedAndReadByLibgsfAgain) {
  ConnectAndLogIn();
  const auto document = OpenFile();
  document->model.quantities[L"SW-Mass"] = L"1.25";
  Answer("QD_PLMCreateMaterial", R"({"data":{}})");
  Answer("QD_PLMMaterialBackFill",
         R"({"material_property_back_fill":{"Plain":"new","Whole":"13","Fraction":"2.50","Checked":"No"}})");
  ExpectBoxes(3);
  EXPECT_EQ(Pick(L"PlmCreateMaterial").result, S_OK);
  for (const char* member :
       {R"("Plain":"text")", R"("Weight":"1.25")", R"("Whole":"-12")", R"("材料":"钢 😀 \"S355\" \\")"}) {
    EXPECT_NE(Asked().at(0).find(member), std::string::npos) << member << " in " << Asked().at(0);
  }
  m_host->Save(*document);
  EXPECT_EQ(PropertiesByLibgsf("elsewhere.sldprt", "Plain Whole Fraction Checked Date"),
            "Plain: \t= \"new\"\nWhole: \t= 13\nFraction: \t= 2.500000\nChecked: \t= FALSE\nDate: \t= "
            "2024-05-31T00:00:00Z\n");
}

}  // namespace
