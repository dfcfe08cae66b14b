// The bitmap handler, called through COM, with real files.
#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "CComBSTR.h"
#include "CStringHelper.h"
#include "add_in_dll.h"
#include "base/com_pointers.h"
#include "environment.h"
#include "import_patch.h"
#include "module/bitmap_handler.h"
#include "resources/resource_ids.h"
#include "temp_folder.h"

namespace {

class BitmapFileHandler : public testing::Test {
 protected:
  BitmapFileHandler() : m_tmp(L"TMP", m_folder.Path()) {
    IClassFactory* factory = nullptr;
    EXPECT_EQ(m_dll.GetClassObject(CLSID_BitmapHandler, IID_PPV_ARGS(&factory)), S_OK);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&m_handler)), S_OK);
    factory->Release();
  }

  std::wstring Create(long id) {
    CComBSTR path;
    EXPECT_EQ(m_handler->CreateBitmapFileFromResource(id, &path), S_OK);
    return std::wstring(path.View());
  }

  void ExpectFailure(long id) {
    BSTR path = SysAllocString(L"before");
    const _bstr_t before(path, false);
    EXPECT_EQ(m_handler->CreateBitmapFileFromResource(id, &path), E_FAIL);
    EXPECT_EQ(path, nullptr);
  }

  /// The bitmap resource `id` after a file header.
  std::string ExpectedFile(unsigned id) const {
    HRSRC resource = FindResourceW(m_dll.Handle(), MAKEINTRESOURCEW(id), RT_BITMAP);
    const DWORD size = SizeofResource(m_dll.Handle(), resource);
    const auto* bytes = static_cast<const char*>(LockResource(LoadResource(m_dll.Handle(), resource)));
    BITMAPFILEHEADER header{};
    std::memcpy(&header.bfType, "BM", 2);
    header.bfSize = 14 + size;
    header.bfOffBits = 14 + 40;
    return std::string(reinterpret_cast<const char*>(&header), 14).append(bytes, size);
  }

  /// The errors that the DLL has logged.
  std::vector<std::wstring> LoggedErrors() const {
    std::vector<std::wstring> errors;
    if (!m_platformFolder.Exists(L"log\\SolidWorks.log")) return errors;
    std::wistringstream text(m_platformFolder.ReadText(L"log\\SolidWorks.log"));
    for (std::wstring line; std::getline(text, line);) {
      if (line.find(L" ERROR ") != std::wstring::npos) errors.push_back(line);
    }
    return errors;
  }

  ComApartment m_com;
  TempFolder m_platformFolder;
  ScopedEnvironment m_home{L"TAVO_HOME", m_platformFolder.Path()};
  AddInDll m_dll;  // logs into the platform's folder until it is unloaded
  TempFolder m_folder;
  ScopedEnvironment m_tmp;
  IBitmapHandlerPtr m_handler;
};

}  // namespace

TEST_F(BitmapFileHandler, WritesTheResourceAsABitmapFile) {
  EXPECT_EQ(ReadFileBytes(Create(IDB_TOOLBAR)), ExpectedFile(IDB_TOOLBAR));
  EXPECT_EQ(ReadFileBytes(Create(IDB_TOOLBAR_MONOCHROME)), ExpectedFile(IDB_TOOLBAR_MONOCHROME));
}

TEST_F(BitmapFileHandler, WritesFilesThatTheSystemReads) {
  HANDLE bitmap = LoadImageW(nullptr, Create(IDB_TOOLBAR).c_str(), IMAGE_BITMAP, 0, 0,
                             LR_LOADFROMFILE | LR_CREATEDIBSECTION);
  ASSERT_NE(bitmap, nullptr);
  BITMAP shape{};
  GetObjectW(bitmap, sizeof shape, &shape);
  DeleteObject(bitmap);
  EXPECT_EQ(shape.bmWidth, 512);
  EXPECT_EQ(shape.bmHeight, 32);
  EXPECT_EQ(shape.bmBitsPixel, 24);
}

TEST_F(BitmapFileHandler, CreatesFilesInTheTemporaryFolder) {
  const std::wstring path = Create(IDB_TOOLBAR);
  ASSERT_TRUE(path.starts_with(m_folder.Path() + L"\\swt")) << CStringHelper::UnicodeToUTF8(path);
  EXPECT_TRUE(path.ends_with(L".tmp")) << CStringHelper::UnicodeToUTF8(path);
}

TEST_F(BitmapFileHandler, UsesTheLow16BitsOfTheId) {
  EXPECT_EQ(ReadFileBytes(Create(0x7FFF0000 | IDB_TOOLBAR)), ExpectedFile(IDB_TOOLBAR));
}

TEST_F(BitmapFileHandler, CreatesANewFileForEachCallAndDeletesAllInDispose) {
  const std::wstring first = Create(IDB_TOOLBAR), second = Create(IDB_TOOLBAR);
  EXPECT_NE(first, second);
  EXPECT_EQ(ReadFileBytes(first), ReadFileBytes(second));
  EXPECT_EQ(m_handler->Dispose(), S_OK);
  EXPECT_TRUE(m_folder.List().empty());
}

TEST_F(BitmapFileHandler, AllowsDisposeWithoutFiles) {
  EXPECT_EQ(m_handler->Dispose(), S_OK);
  EXPECT_EQ(m_handler->Dispose(), S_OK);
}

TEST_F(BitmapFileHandler, CreatesFilesAfterDispose) {
  Create(IDB_TOOLBAR);
  m_handler->Dispose();
  EXPECT_EQ(ReadFileBytes(Create(IDB_TOOLBAR)), ExpectedFile(IDB_TOOLBAR));
}

TEST_F(BitmapFileHandler, SkipsAFileThatCannotBeDeleted) {
  const std::wstring gone = Create(IDB_TOOLBAR), held = Create(IDB_TOOLBAR), last = Create(IDB_TOOLBAR);
  DeleteFileW(gone.c_str());
  HANDLE host = CreateFileW(held.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(m_handler->Dispose(), S_OK);
  CloseHandle(host);
  ASSERT_EQ(m_folder.List().size(), 1u);
  EXPECT_TRUE(held.ends_with(m_folder.List().front()));
  EXPECT_EQ(m_handler->Dispose(), S_OK);
  EXPECT_EQ(m_folder.List().size(), 1u) << "the handler tries only once";
}

TEST_F(BitmapFileHandler, DeletesItsFilesWhenItIsDestroyed) {
  Create(IDB_TOOLBAR);
  m_handler = nullptr;
  EXPECT_TRUE(m_folder.List().empty());
}

TEST_F(BitmapFileHandler, FailsIfTheBitmapIsMissingAndLeavesAnEmptyFile) {
  ExpectFailure(9999);
  ASSERT_EQ(m_folder.List().size(), 1u);
  EXPECT_EQ(m_folder.Read(m_folder.List().front()), "");
  EXPECT_EQ(m_handler->Dispose(), S_OK);
  EXPECT_EQ(m_folder.List().size(), 1u) << "Dispose deletes only files that were returned";
}

TEST_F(BitmapFileHandler, FailsIfTheTemporaryFolderIsMissing) {
  m_tmp.Set(m_folder.Path(L"absent"));
  ExpectFailure(IDB_TOOLBAR);
  EXPECT_TRUE(m_folder.List().empty());
}

TEST_F(BitmapFileHandler, FailsIfTheTemporaryFolderIsAFile) {
  m_tmp.Set(m_folder.Write(L"file", ""));
  ExpectFailure(IDB_TOOLBAR);
}

TEST_F(BitmapFileHandler, FailsIfThePathOfTheTemporaryFolderIsTooLong) {
  m_tmp.Set(m_folder.MakeFolder(std::wstring(150, L'a') + L"\\" + std::wstring(150, L'b')));
  ExpectFailure(IDB_TOOLBAR);
}

TEST_F(BitmapFileHandler, FailsForANullPointer) {
  EXPECT_EQ(m_handler->CreateBitmapFileFromResource(IDB_TOOLBAR, nullptr), E_POINTER);
  EXPECT_TRUE(m_folder.List().empty());
}

TEST_F(BitmapFileHandler, CanBeCalledByName) {
  const IDispatchPtr dispatch = m_handler;
  _variant_t path, id(static_cast<long>(IDB_TOOLBAR));
  LPOLESTR name = const_cast<LPOLESTR>(L"createbitmapfilefromresource");
  DISPID method = 0;
  ASSERT_EQ(dispatch->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &method), S_OK);
  DISPPARAMS arguments{&id, nullptr, 1, 0};
  ASSERT_EQ(dispatch->Invoke(method, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, &path,
                             nullptr, nullptr),
            S_OK);
  ASSERT_EQ(path.vt, VT_BSTR);
  EXPECT_EQ(ReadFileBytes(V_BSTR(&path)), ExpectedFile(IDB_TOOLBAR));
}

TEST_F(BitmapFileHandler, ReportsTheCodeOfAFailureThroughDispatch) {
  const IDispatchPtr dispatch = m_handler;
  _variant_t path, id(9999L);
  DISPPARAMS arguments{&id, nullptr, 1, 0};
  EXCEPINFO exception{};
  EXPECT_EQ(dispatch->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, &path, &exception,
                             nullptr),
            DISP_E_EXCEPTION);
  EXPECT_EQ(exception.scode, E_FAIL);
  EXPECT_EQ(dispatch->Invoke(1, IID_IUnknown, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, &path,
                             nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
}

/// The DLL's allocation of the path fails; that of other texts does not.
BSTR WINAPI NoMemory(const OLECHAR*, UINT) { return nullptr; }

TEST_F(BitmapFileHandler, ReturnsThatThereIsNoMemoryForThePath) {
  const ImportPatch patch(m_dll.Handle(), "SysAllocStringLen", &NoMemory);
  BSTR path = SysAllocString(L"before");
  const _bstr_t before(path, false);

  EXPECT_EQ(m_handler->CreateBitmapFileFromResource(IDB_TOOLBAR, &path), E_OUTOFMEMORY);

  EXPECT_EQ(path, nullptr);
  ASSERT_EQ(LoggedErrors().size(), 1u);
  EXPECT_NE(LoggedErrors()[0].find(L"IBitmapHandler::CreateBitmapFileFromResource raised 0x8007000e"),
            std::wstring::npos)
      << CStringHelper::UnicodeToUTF8(LoggedErrors()[0]);
}

TEST_F(BitmapFileHandler, ReportsThatThereIsNoMemoryForThePathThroughDispatch) {
  const IDispatchPtr dispatch = m_handler;
  const ImportPatch patch(m_dll.Handle(), "SysAllocStringLen", &NoMemory);
  _variant_t path, id(static_cast<long>(IDB_TOOLBAR));
  DISPPARAMS arguments{&id, nullptr, 1, 0};
  EXCEPINFO exception{};

  EXPECT_EQ(dispatch->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, &path, &exception,
                             nullptr),
            DISP_E_EXCEPTION);

  EXPECT_EQ(exception.scode, E_OUTOFMEMORY);
  EXPECT_EQ(_bstr_t(path).length(), 0u);
  for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile}) {
    SysFreeString(text);
  }
  ASSERT_EQ(LoggedErrors().size(), 1u);
  EXPECT_NE(LoggedErrors()[0].find(L"IBitmapHandler::CreateBitmapFileFromResource raised 0x8007000e"),
            std::wstring::npos)
      << CStringHelper::UnicodeToUTF8(LoggedErrors()[0]);
}

TEST_F(BitmapFileHandler, HasTypeInformation) {
  const IDispatchPtr dispatch = m_handler;
  UINT count = 0;
  EXPECT_EQ(dispatch->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  ITypeInfo* info = nullptr;
  ASSERT_EQ(dispatch->GetTypeInfo(0, 0, &info), S_OK);
  info->Release();
  EXPECT_EQ(dispatch->GetTypeInfo(1, 0, &info), DISP_E_BADINDEX);
  EXPECT_EQ(info, nullptr);
}
