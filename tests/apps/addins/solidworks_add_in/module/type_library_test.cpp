// The type library, which the host and its macro editors read.
#include <gtest/gtest.h>

#include <string>

#include "CComBSTR.h"
#include "CStringHelper.h"
#include "add_in_dll.h"
#include "add_in_methods.h"
#include "base/com_pointers.h"
#include "solidworks_add_in_h.h"

namespace {

/// The help of a method. Two have that of an older name.
std::wstring HelpOf(const std::wstring& name) {
  if (name == L"PlmImportCurrent") return L"method PlmImport";
  if (name == L"EnableImportCurrent") return L"method EnableImport";
  return L"method " + name;
}

GUID Guid(const wchar_t* text) {
  GUID id{};
  CLSIDFromString(text, &id);
  return id;
}

constexpr MEMBERID kWholeLibrary = -1;
constexpr WORD kInheritedFunctions = 7;  // of IUnknown and IDispatch

class TypeLibrary : public testing::Test {
 protected:
  TypeLibrary() { LoadTypeLibEx(AddInDll::BuiltPath().c_str(), REGKIND_NONE, &m_library); }

  ITypeInfoPtr Info(REFGUID id) {
    ITypeInfoPtr info;
    EXPECT_EQ(m_library->GetTypeInfoOfGuid(id, &info), S_OK);
    return info;
  }

  /// The vtable description of a dual interface, in which the functions have their real signatures.
  ITypeInfoPtr Vtable(REFIID iid) {
    const ITypeInfoPtr dispatch = Info(iid);
    HREFTYPE reference = 0;
    EXPECT_EQ(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK) << "not dual";
    ITypeInfoPtr vtable;
    EXPECT_EQ(dispatch->GetRefTypeInfo(reference, &vtable), S_OK);
    return vtable;
  }

  static void ExpectDocumentation(ITypeInfo* info, MEMBERID id, std::wstring_view name,
                                  std::wstring_view help) {
    CComBSTR found_name, found_help;
    ASSERT_EQ(info->GetDocumentation(id, &found_name, &found_help, nullptr, nullptr), S_OK);
    EXPECT_EQ(found_name.View(), name);
    EXPECT_EQ(found_help.View(), help);
  }

  ITypeLibPtr m_library;
};

/// A function of a type description, released by the destructor.
class Function {
 public:
  Function(ITypeInfo* info, UINT index) : m_info(info) { m_info->GetFuncDesc(index, &m_function); }
  Function(const Function&) = delete;
  Function& operator=(const Function&) = delete;
  ~Function() { m_info->ReleaseFuncDesc(m_function); }
  const FUNCDESC* operator->() const { return m_function; }

 private:
  ITypeInfo* m_info;
  FUNCDESC* m_function = nullptr;
};

std::wstring ParameterName(ITypeInfo* info, MEMBERID id) {
  BSTR names[2] = {};
  UINT count = 0;
  info->GetNames(id, names, 2, &count);
  const _bstr_t function(names[0], false), parameter(names[1], false);
  return count == 2 ? static_cast<const wchar_t*>(parameter) : L"";
}

}  // namespace

TEST_F(TypeLibrary, HasNameIdVersionAndHelp) {
  ASSERT_TRUE(m_library);
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(m_library->GetLibAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, Guid(L"{EA77B297-A3D1-4C82-BF87-2CA5AADE9530}"));
  EXPECT_EQ(attributes->wMajorVerNum, 1);
  EXPECT_EQ(attributes->wMinorVerNum, 0);
  EXPECT_EQ(attributes->syskind, SYS_WIN64);
  m_library->ReleaseTLibAttr(attributes);
  CComBSTR name, help;
  ASSERT_EQ(m_library->GetDocumentation(kWholeLibrary, &name, &help, nullptr, nullptr), S_OK);
  EXPECT_EQ(name.View(), L"SolidWorksAddInLib");
  EXPECT_EQ(help.View(), L"solidworks_add_in 1.0 Type Library");
}

TEST_F(TypeLibrary, DescribesTheDualInterfaceOfTheAddIn) {
  const ITypeInfoPtr info = Info(__uuidof(ISolidWorksAddIn));
  ExpectDocumentation(info, MEMBERID_NIL, L"ISolidWorksAddIn", L"ISolidWorksAddIn Interface");
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
  EXPECT_TRUE(attributes->wTypeFlags & TYPEFLAG_FDUAL);
  info->ReleaseTypeAttr(attributes);
}

TEST_F(TypeLibrary, HasAllMethodsInOrder) {
  const ITypeInfoPtr info = Vtable(__uuidof(ISolidWorksAddIn));
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
  const WORD count = attributes->cFuncs;
  info->ReleaseTypeAttr(attributes);
  ASSERT_EQ(count, std::size(kMethodNames));
  for (UINT index = 0; index < count; ++index) {
    const std::wstring name = kMethodNames[index];
    SCOPED_TRACE(CStringHelper::UnicodeToUTF8(name));
    const Function function(info, index);
    EXPECT_EQ(function->memid, static_cast<MEMBERID>(index + 1));
    EXPECT_EQ(static_cast<unsigned>(function->oVft), (kInheritedFunctions + index) * sizeof(void*));
    EXPECT_EQ(function->invkind, INVOKE_FUNC);
    EXPECT_EQ(function->elemdescFunc.tdesc.vt, VT_HRESULT);
    ExpectDocumentation(info, function->memid, name, HelpOf(name));
    const bool has_status = name.starts_with(L"Enable");
    ASSERT_EQ(function->cParams, has_status ? 1 : 0);
    if (!has_status) continue;
    const ELEMDESC& status = function->lprgelemdescParam[0];
    EXPECT_EQ(ParameterName(info, function->memid), L"status");
    EXPECT_EQ(status.paramdesc.wParamFlags, PARAMFLAG_FOUT);
    ASSERT_EQ(status.tdesc.vt, VT_PTR);
    EXPECT_EQ(status.tdesc.lptdesc->vt, VT_I4);
  }
}

TEST_F(TypeLibrary, DescribesTheBitmapHandler) {
  ExpectDocumentation(Info(__uuidof(IBitmapHandler)), MEMBERID_NIL, L"IBitmapHandler",
                      L"IBitmapHandler Interface");
  const ITypeInfoPtr info = Vtable(__uuidof(IBitmapHandler));
  const Function create(info, 0);
  ExpectDocumentation(info, create->memid, L"CreateBitmapFileFromResource",
                      L"method CreateBitmapFileFromResource");
  ASSERT_EQ(create->cParams, 2);
  EXPECT_EQ(create->lprgelemdescParam[0].paramdesc.wParamFlags, PARAMFLAG_FIN);
  EXPECT_EQ(create->lprgelemdescParam[0].tdesc.vt, VT_I4);
  EXPECT_EQ(create->lprgelemdescParam[1].paramdesc.wParamFlags, PARAMFLAG_FOUT | PARAMFLAG_FRETVAL);
  ASSERT_EQ(create->lprgelemdescParam[1].tdesc.vt, VT_PTR);
  EXPECT_EQ(create->lprgelemdescParam[1].tdesc.lptdesc->vt, VT_BSTR);
  EXPECT_EQ(ParameterName(info, create->memid), L"resID");
  const Function dispose(info, 1);
  ExpectDocumentation(info, dispose->memid, L"Dispose", L"method Dispose");
  EXPECT_EQ(dispose->cParams, 0);
}

TEST_F(TypeLibrary, HasTheTwoClassesWithTheirInterfaces) {
  const struct {
    GUID id;
    const wchar_t* name;
    const wchar_t* help;
    GUID interface_id;
  } classes[] = {
      {Guid(L"{555D9E80-10EC-45A2-9712-D43E5E66F163}"), L"SwAddin", L"SwAddin Class",
       __uuidof(ISolidWorksAddIn)},
      {Guid(L"{BBFA8676-A288-4967-90CD-ED68F7490D93}"), L"BitmapHandler", L"BitmapHandler Class",
       __uuidof(IBitmapHandler)},
  };
  for (const auto& expected : classes) {
    const ITypeInfoPtr info = Info(expected.id);
    ASSERT_TRUE(info);
    ExpectDocumentation(info, MEMBERID_NIL, expected.name, expected.help);
    HREFTYPE reference = 0;
    ASSERT_EQ(info->GetRefTypeOfImplType(0, &reference), S_OK);
    ITypeInfoPtr interface_info;
    ASSERT_EQ(info->GetRefTypeInfo(reference, &interface_info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(interface_info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, expected.interface_id);
    interface_info->ReleaseTypeAttr(attributes);
  }
}
