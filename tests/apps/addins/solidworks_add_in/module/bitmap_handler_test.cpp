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
#include "temp_folder.h"

namespace {

// The icon strips of the DLL.
constexpr long kStrip = 254;
constexpr long kMonochromeStrip = 255;

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

  /// There is one file, with this content, which Dispose leaves because the handler did not return it.
  void ExpectForgottenFile(const std::string& content) const {
    EXPECT_EQ(m_handler->Dispose(), S_OK);
    ASSERT_EQ(m_folder.List().size(), 1u);
    EXPECT_EQ(m_folder.Read(m_folder.List().front()), content);
  }

  /// The bitmap resource `id` after a file header.
  std::string ExpectedFile(long id) const {
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

  /// The only error in the log is that there was no memory.
  void ExpectLoggedNoMemory() const {
    const std::vector<std::wstring> errors = LoggedErrors();
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_NE(errors[0].find(L"IBitmapHandler::CreateBitmapFileFromResource raised 0x8007000e"),
              std::wstring::npos)
        << CStringHelper::UnicodeToUTF8(errors[0]);
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
  EXPECT_EQ(ReadFileBytes(Create(kStrip)), ExpectedFile(kStrip));
  EXPECT_EQ(ReadFileBytes(Create(kMonochromeStrip)), ExpectedFile(kMonochromeStrip));
}

TEST_F(BitmapFileHandler, WritesFilesThatTheSystemReads) {
  HANDLE bitmap =
      LoadImageW(nullptr, Create(kStrip).c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION);
  ASSERT_NE(bitmap, nullptr);
  BITMAP shape{};
  GetObjectW(bitmap, sizeof shape, &shape);
  DeleteObject(bitmap);
  EXPECT_EQ(shape.bmWidth, 512);
  EXPECT_EQ(shape.bmHeight, 32);
  EXPECT_EQ(shape.bmBitsPixel, 24);
}

TEST_F(BitmapFileHandler, CreatesFilesInTheTemporaryFolder) {
  const std::wstring path = Create(kStrip);
  ASSERT_TRUE(path.starts_with(m_folder.Path() + L"\\swt")) << CStringHelper::UnicodeToUTF8(path);
  EXPECT_TRUE(path.ends_with(L".tmp")) << CStringHelper::UnicodeToUTF8(path);
}

TEST_F(BitmapFileHandler, UsesTheLow16BitsOfTheId) {
  EXPECT_EQ(ReadFileBytes(Create(0x7FFF0000 | kStrip)), ExpectedFile(kStrip));
}

TEST_F(BitmapFileHandler, CreatesANewFileForEachCallAndDeletesAllInDispose) {
  const std::wstring first = Create(kStrip), second = Create(kStrip);
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
  Create(kStrip);
  m_handler->Dispose();
  EXPECT_EQ(ReadFileBytes(Create(kStrip)), ExpectedFile(kStrip));
}

TEST_F(BitmapFileHandler, SkipsAFileThatCannotBeDeleted) {
  const std::wstring gone = Create(kStrip), held = Create(kStrip), last = Create(kStrip);
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
  Create(kStrip);
  m_handler = nullptr;
  EXPECT_TRUE(m_folder.List().empty());
}

TEST_F(BitmapFileHandler, FailsIfTheBitmapIsMissingAndLeavesAnEmptyFile) {
  ExpectFailure(9999);
  ExpectForgottenFile("");
}

/// In place of the system's functions.
HANDLE WINAPI OpenNothing(LPCWSTR, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE) {
  SetLastError(ERROR_ACCESS_DENIED);
  return INVALID_HANDLE_VALUE;
}
BOOL WINAPI WriteAllButTheLastByte(HANDLE file, LPCVOID bytes, DWORD count, DWORD* written, OVERLAPPED* how) {
  return WriteFile(file, bytes, count - 1, written, how);
}
BOOL WINAPI WriteAndFail(HANDLE file, LPCVOID bytes, DWORD count, DWORD* written, OVERLAPPED* how) {
  WriteFile(file, bytes, count, written, how);
  return FALSE;
}

TEST_F(BitmapFileHandler, FailsIfTheFileCannotBeOpened) {
  {
    const ImportPatch patch(m_dll.Handle(), "CreateFileW", &OpenNothing);
    ExpectFailure(kStrip);
  }
  ExpectForgottenFile("");
}

TEST_F(BitmapFileHandler, FailsIfTheFileIsNotWrittenToItsEnd) {
  {
    const ImportPatch patch(m_dll.Handle(), "WriteFile", &WriteAllButTheLastByte);
    ExpectFailure(kStrip);
  }
  const std::string whole = ExpectedFile(kStrip);
  ExpectForgottenFile(whole.substr(0, whole.size() - 1));
}

TEST_F(BitmapFileHandler, FailsIfTheSystemReportsThatWritingFailed) {
  {
    const ImportPatch patch(m_dll.Handle(), "WriteFile", &WriteAndFail);
    ExpectFailure(kStrip);
  }
  ExpectForgottenFile(ExpectedFile(kStrip));
}

TEST_F(BitmapFileHandler, FailsIfTheTemporaryFolderIsMissing) {
  m_tmp.Set(m_folder.Path(L"absent"));
  ExpectFailure(kStrip);
  EXPECT_TRUE(m_folder.List().empty());
}

TEST_F(BitmapFileHandler, FailsIfTheTemporaryFolderIsAFile) {
  m_tmp.Set(m_folder.Write(L"file", ""));
  ExpectFailure(kStrip);
}

TEST_F(BitmapFileHandler, FailsIfThePathOfTheTemporaryFolderIsTooLong) {
  m_tmp.Set(m_folder.MakeFolder(std::wstring(150, L'a') + L"\\" + std::wstring(150, L'b')));
  ExpectFailure(kStrip);
}

TEST_F(BitmapFileHandler, FailsForANullPointer) {
  EXPECT_EQ(m_handler->CreateBitmapFileFromResource(kStrip, nullptr), E_POINTER);
  EXPECT_TRUE(m_folder.List().empty());
}

TEST_F(BitmapFileHandler, CanBeCalledByName) {
  const IDispatchPtr dispatch = m_handler;
  _variant_t path, id(kStrip);
  LPOLESTR name = const_cast<LPOLESTR>(L"createbitmapfilefromresource");
  DISPID method = 0;
  ASSERT_EQ(dispatch->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &method), S_OK);
  DISPPARAMS arguments{&id, nullptr, 1, 0};
  ASSERT_EQ(dispatch->Invoke(method, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, &path,
                             nullptr, nullptr),
            S_OK);
  ASSERT_EQ(path.vt, VT_BSTR);
  EXPECT_EQ(ReadFileBytes(V_BSTR(&path)), ExpectedFile(kStrip));
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
  BSTR path = SysAllocString(L"before");
  const _bstr_t before(path, false);
  {
    const ImportPatch patch(m_dll.Handle(), "SysAllocStringLen", &NoMemory);
    EXPECT_EQ(m_handler->CreateBitmapFileFromResource(kStrip, &path), E_OUTOFMEMORY);
  }
  EXPECT_EQ(path, nullptr);
  ExpectLoggedNoMemory();
  ExpectForgottenFile("");
}

TEST_F(BitmapFileHandler, ReportsThatThereIsNoMemoryForThePathThroughDispatch) {
  const IDispatchPtr dispatch = m_handler;
  _variant_t path, id(kStrip);
  DISPPARAMS arguments{&id, nullptr, 1, 0};
  EXCEPINFO exception{};
  {
    const ImportPatch patch(m_dll.Handle(), "SysAllocStringLen", &NoMemory);
    EXPECT_EQ(dispatch->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, &path,
                               &exception, nullptr),
              DISP_E_EXCEPTION);
  }
  EXPECT_EQ(exception.scode, E_OUTOFMEMORY);
  EXPECT_EQ(_bstr_t(path).length(), 0u);
  for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile}) {
    SysFreeString(text);
  }
  ExpectLoggedNoMemory();
  ExpectForgottenFile("");
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
