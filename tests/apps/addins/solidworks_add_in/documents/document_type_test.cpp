// Which type of document a path names.
#include "documents/document_type.h"

#include <gtest/gtest.h>

namespace {

struct NamedType {
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

INSTANTIATE_TEST_SUITE_P(, DocumentType,
                         testing::Values(NamedType{L"D:\\w\\Top.SLDASM", swDocASSEMBLY, false, true},
                                         NamedType{L"d:\\w\\part.sldprt", swDocPART, true, false},
                                         NamedType{L"d:\\w\\sheet.SldDrw", swDocDRAWING, false, false},
                                         NamedType{L"d:\\w\\a.sldprt.bak\\b.sldasm", swDocPART, true, true},
                                         NamedType{L"d:\\w\\a.sldasm\\b.slddrw", swDocASSEMBLY, false, true},
                                         NamedType{L"d:\\w\\readme.txt", swDocNONE, false, false},
                                         NamedType{L"", swDocNONE, false, false},
                                         NamedType{L"sldprt", swDocNONE, false, false},
                                         NamedType{L"零件.SLDPRT", swDocPART, true, false}));

}  // namespace
