// Documents as an add-in sees them.
#include "case_name.h"
#include "host/assembly.h"
#include "host/drawing.h"
#include "host/model_doc.h"
#include "host_fixture.h"

namespace {

struct Opened {
  HRESULT result = E_FAIL;
  IModelDoc2Ptr document;
  long errors = -1;
  long warnings = -1;
};

class DocumentsTest : public HostTest {
 protected:
  Opened Open(const std::wstring& path, long type, long options = swOpenDocOptions_Silent) {
    Opened opened;
    opened.result = Host().Application()->OpenDoc6(CComBSTR(path), type, options, CComBSTR(L""),
                                                   &opened.errors, &opened.warnings, &opened.document);
    return opened;
  }
};

std::wstring TitleOf(const IModelDoc2Ptr& document) {
  CComBSTR title;
  document->GetTitle(&title);
  return std::wstring(title.View());
}

TEST_F(DocumentsTest, OpensAFileAsTheActiveDocument) {
  const std::wstring path = MakePart(L"bolt.sldprt");
  const Opened opened = Open(path, swDocPART);
  ASSERT_TRUE(opened.document);
  EXPECT_EQ(opened.result, S_OK);
  EXPECT_EQ(opened.errors, 0);
  EXPECT_EQ(opened.warnings, 0);
  EXPECT_EQ(TitleOf(opened.document), L"bolt.sldprt");
  long type = 0;
  opened.document->GetType(&type);
  EXPECT_EQ(type, swDocPART);
  CComBSTR name;
  opened.document->GetPathName(&name);
  EXPECT_EQ(name.View(), path);
  IModelDoc2Ptr active;
  Host().Application()->get_IActiveDoc2(&active);
  EXPECT_EQ(active.GetInterfacePtr(), opened.document.GetInterfacePtr());
}

TEST_F(DocumentsTest, ReturnsADocumentThatIsOpenAlready) {
  const std::wstring path = MakePart(L"bolt.sldprt");
  const auto first = Host().Open(path);
  Host().New(swDocPART);
  const Opened again = Open(m_folder.Path(L"BOLT.SLDPRT"), swDocPART);
  EXPECT_EQ(TitleOf(again.document), first->title);
  EXPECT_EQ(Host().OpenDocuments().size(), 2u);
  EXPECT_EQ(Host().ActiveDocument()->title, L"Part1") << "opening again does not activate";
}

struct RefusalCase {
  const char* name;
  const wchar_t* file;
  long type;
  long errors;
};

class RefusalTest : public DocumentsTest, public testing::WithParamInterface<RefusalCase> {};

TEST_P(RefusalTest, ReturnsSuccessWithoutADocument) {
  MakePart(L"part.sldprt");
  MakeAssembly(L"renamed.sldprt");
  MakePart(L"part.txt");
  m_folder.Write(L"damaged.sldprt", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 nothing else");
  const Opened opened = Open(m_folder.Path(GetParam().file), GetParam().type);
  EXPECT_EQ(opened.result, S_OK);
  EXPECT_FALSE(opened.document);
  EXPECT_EQ(opened.errors, GetParam().errors);
  EXPECT_TRUE(Host().OpenDocuments().empty());
  EXPECT_TRUE(Journal().Contains(std::wstring(L"not opened: ") + m_folder.Path(GetParam().file)));
}

const RefusalCase kRefusals[] = {
    {"MissingFile", L"none.sldprt", swDocPART, swFileNotFoundError},
    {"NameOfAnotherType", L"part.sldprt", swDocASSEMBLY, swInvalidFileTypeError},
    {"UnknownExtension", L"part.txt", swDocNONE, swInvalidFileTypeError},
    {"ContentOfAnotherType", L"renamed.sldprt", swDocPART, swInvalidFileTypeError},
    {"DamagedCompoundFile", L"damaged.sldprt", swDocPART, swGenericError},
};

INSTANTIATE_TEST_SUITE_P(, RefusalTest, testing::ValuesIn(kRefusals), CaseName<RefusalCase>);

TEST_F(DocumentsTest, TakesReadOnlyAndViewOnlyFromTheOptions) {
  VARIANT_BOOL flag = VARIANT_TRUE;
  const Opened read_only = Open(MakePart(L"a.sldprt"), swDocPART, 2);
  read_only.document->IsOpenedReadOnly(&flag);
  EXPECT_EQ(flag, VARIANT_TRUE);
  read_only.document->IsOpenedViewOnly(&flag);
  EXPECT_EQ(flag, VARIANT_FALSE);
  const Opened view_only = Open(MakePart(L"b.sldprt"), swDocPART, 4);
  view_only.document->IsOpenedViewOnly(&flag);
  EXPECT_EQ(flag, VARIANT_TRUE);
}

TEST_F(DocumentsTest, ANewDocumentHasATitleAndNoPath) {
  Host().New(swDocPART);
  Host().New(swDocDRAWING);
  IModelDoc2Ptr active;
  Host().Application()->get_IActiveDoc2(&active);
  EXPECT_EQ(TitleOf(active), L"Draw2");
  CComBSTR path;
  EXPECT_EQ(active->GetPathName(&path), S_OK);
  EXPECT_EQ(path.View(), L"");
  VARIANT_BOOL changed = VARIANT_FALSE;
  active->GetSaveFlag(&changed);
  EXPECT_EQ(changed, VARIANT_TRUE);
}

TEST_F(DocumentsTest, SavingGivesANewDocumentItsFile) {
  const auto document = Host().New(swDocPART);
  const std::wstring path = m_folder.Path(L"saved.sldprt");
  Host().Save(*document, path);
  EXPECT_EQ(document->title, L"saved.sldprt");
  EXPECT_FALSE(document->changed);
  EXPECT_EQ(cad_host::ReadModelFile(path).type, swDocPART);
  EXPECT_THROW(Host().Save(*document, m_folder.Path(L"saved.sldasm")), cad_host::HostError);
}

TEST_F(DocumentsTest, ActivatesByTitleOrPath) {
  const auto bolt = Host().Open(MakePart(L"bolt.sldprt"));
  const auto other = Host().New(swDocPART);
  IDispatchPtr activated;
  Host().Application()->ActivateDoc(CComBSTR(bolt->path), &activated);
  EXPECT_EQ(Host().ActiveDocument(), bolt);
  EXPECT_TRUE(activated);
  Host().Application()->ActivateDoc(CComBSTR(L"part1"), &activated);
  EXPECT_EQ(Host().ActiveDocument(), other);
  EXPECT_EQ(Host().Application()->ActivateDoc(CComBSTR(L"nothing"), &activated), S_OK);
  EXPECT_FALSE(activated);
  EXPECT_EQ(Host().ActiveDocument(), other);
}

TEST_F(DocumentsTest, FindsOpenDocumentsByName) {
  const auto bolt = Host().Open(MakePart(L"bolt.sldprt"));
  IDispatchPtr found;
  Host().Application()->GetOpenDocumentByName(CComBSTR(bolt->path), &found);
  EXPECT_TRUE(found);
  EXPECT_EQ(Host().Application()->GetOpenDocumentByName(CComBSTR(L"nut.sldprt"), &found), S_OK);
  EXPECT_FALSE(found);
}

TEST_F(DocumentsTest, ClosingActivatesThePreviousDocument) {
  const auto first = Host().New(swDocPART);
  const auto second = Host().Open(MakePart(L"bolt.sldprt"));
  EXPECT_EQ(Host().Application()->CloseDoc(CComBSTR(second->path)), S_OK);
  EXPECT_EQ(Host().ActiveDocument(), first);
  EXPECT_EQ(Host().Application()->CloseDoc(CComBSTR(second->path)), S_OK) << "not open any more";
  EXPECT_EQ(Host().OpenDocuments().size(), 1u);
}

TEST_F(DocumentsTest, TheObjectOfAClosedDocumentIsDisconnected) {
  const Opened opened = Open(MakePart(L"bolt.sldprt"), swDocPART);
  Host().Close(Host().ActiveDocument());
  long type = -1;
  EXPECT_EQ(opened.document->GetType(&type), RPC_E_DISCONNECTED);
  EXPECT_EQ(type, 0);
}

TEST_F(DocumentsTest, TheFileOfAnOpenDocumentCanBeReadButNotReplaced) {
  const std::wstring path = MakePart(L"bolt.sldprt");
  const std::wstring copy = m_folder.Path(L"copy.sldprt");
  Host().Open(path);
  EXPECT_NE(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_TRUE(CopyFileW(path.c_str(), copy.c_str(), FALSE));
  EXPECT_FALSE(CopyFileW(copy.c_str(), path.c_str(), FALSE));
  EXPECT_FALSE(MoveFileExW(path.c_str(), m_folder.Path(L"moved.sldprt").c_str(), MOVEFILE_REPLACE_EXISTING));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SHARING_VIOLATION));
  EXPECT_FALSE(DeleteFileW(path.c_str()));
  Host().Save(*Host().ActiveDocument());
  EXPECT_FALSE(DeleteFileW(path.c_str())) << "open again after the host has written it";
  Host().Close(Host().ActiveDocument());
  EXPECT_TRUE(DeleteFileW(path.c_str()));
}

struct InterfaceCase {
  const char* name;
  swDocumentTypes_e type;
  bool is_assembly;
  bool is_drawing;
};

class InterfaceTest : public HostTest, public testing::WithParamInterface<InterfaceCase> {};

TEST_P(InterfaceTest, ADocumentHasTheInterfacesOfItsTypeAndOneIdentity) {
  Host().New(GetParam().type);
  IModelDoc2Ptr document;
  Host().Application()->get_IActiveDoc2(&document);
  const IUnknownPtr identity(document);
  for (const auto& [iid, answers] : {std::pair{__uuidof(IModelDoc2), true},
                                     {__uuidof(IDispatch), true},
                                     {__uuidof(IAssemblyDoc), GetParam().is_assembly},
                                     {__uuidof(IDrawingDoc), GetParam().is_drawing},
                                     {__uuidof(ISldWorks), false}}) {
    IUnknown* object = document;  // not null, to see that a refusal clears it
    const HRESULT result = document->QueryInterface(iid, reinterpret_cast<void**>(&object));
    EXPECT_EQ(result, answers ? S_OK : E_NOINTERFACE);
    EXPECT_EQ(object != nullptr, answers);
    if (!object) continue;
    const IUnknownPtr owner(object, false);
    IUnknownPtr same;
    object->QueryInterface(IID_PPV_ARGS(&same));
    EXPECT_EQ(same.GetInterfacePtr(), identity.GetInterfacePtr());
  }
}

const InterfaceCase kInterfaces[] = {{"Part", swDocPART, false, false},
                                     {"Assembly", swDocASSEMBLY, true, false},
                                     {"Drawing", swDocDRAWING, false, true}};

INSTANTIATE_TEST_SUITE_P(, InterfaceTest, testing::ValuesIn(kInterfaces), CaseName<InterfaceCase>);

TEST_F(DocumentsTest, ReturnsTheRevisionOfTheHost) {
  Restart(L"26.1.0");
  CComBSTR revision;
  EXPECT_EQ(Host().Application()->RevisionNumber(&revision), S_OK);
  EXPECT_EQ(revision.View(), L"26.1.0");
}

}  // namespace
