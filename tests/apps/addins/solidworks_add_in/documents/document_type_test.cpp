// The type of document that a path names.
#include "documents/document_type.h"

#include <gtest/gtest.h>

#include "case_name.h"

namespace {

struct NamedType {
  const char* name;
  const wchar_t* path;
  swDocumentTypes_e type;
  bool names_part;
  bool names_assembly;
};

class DocumentType : public testing::TestWithParam<NamedType> {};

TEST_P(DocumentType, IsTakenFromThePath) {
  EXPECT_EQ(GetDocumentType(GetParam().path), GetParam().type);
  EXPECT_EQ(NamesPart(GetParam().path), GetParam().names_part);
  EXPECT_EQ(NamesAssembly(GetParam().path), GetParam().names_assembly);
}

INSTANTIATE_TEST_SUITE_P(
    , DocumentType,
    testing::Values(NamedType{"AssemblyInUpperCase", L"D:\\w\\Top.SLDASM", swDocASSEMBLY, false, true},
                    NamedType{"Part", L"d:\\w\\part.sldprt", swDocPART, true, false},
                    NamedType{"DrawingInMixedCase", L"d:\\w\\sheet.SldDrw", swDocDRAWING, false, false},
                    NamedType{"AssemblyInAFolderNamedLikeAPart", L"d:\\w\\a.sldprt.bak\\b.sldasm", swDocPART,
                              true, true},
                    NamedType{"DrawingInAFolderNamedLikeAnAssembly", L"d:\\w\\a.sldasm\\b.slddrw",
                              swDocASSEMBLY, false, true},
                    NamedType{"OtherExtension", L"d:\\w\\readme.txt", swDocNONE, false, false},
                    NamedType{"Empty", L"", swDocNONE, false, false},
                    NamedType{"ExtensionWithoutAPoint", L"sldprt", swDocNONE, false, false},
                    NamedType{"ChineseName", L"零件.SLDPRT", swDocPART, true, false}),
    CaseName<NamedType>);

}  // namespace
