// The dispatch interface, through which the host calls the add-in by name.
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "CStringHelper.h"
#include "CZALException.h"
#include "add_in_dll.h"
#include "base/com_pointers.h"
#include "environment.h"
#include "linked_module.h"
#include "recording_add_in.h"
#include "temp_folder.h"

namespace {

const wchar_t* const kNames[] = {
    L"PlmLogin",
    L"EnablePlmLogin",
    L"PlmLogOut",
    L"EnablePlmLogOut",
    L"OpenDataSelector",
    L"EnableOpenDataSelector",
    L"PlmMyCheckOutList",
    L"EnablePlmMyCheckOutList",
    L"PlmWf",
    L"EnablePlmWf",
    L"PlmCode",
    L"EnablePlmCode",
    L"PlmQuery",
    L"EnablePlmQuery",
    L"PlmImportCurrent",
    L"EnableImportCurrent",
    L"PlmLotimport",
    L"EnableLotimport",
    L"PlmCreateMaterial",
    L"EnablePlmCreateMaterial",
    L"PlmMyTempMaterial",
    L"EnablePlmMyTempMaterial",
    L"PlmTaskManage",
    L"EnablePlmTaskManage",
    L"PlmMaterialBackFill",
    L"EnablePlmMaterialBackFill",
    L"PlmImportChangeItem",
    L"EnablePlmImportChangeItem",
};

// The first exception sets up the log, once for the program.
const TempFolder kPlatformFolder;
const ScopedEnvironment kPlatformHome(L"TAVO_HOME", kPlatformFolder.Path());

std::wstring Log() {
  const wchar_t* const name = L"log\\SolidWorks.log";
  return kPlatformFolder.Exists(name) ? kPlatformFolder.ReadText(name) : L"";
}

constexpr DISPID kPlmLogin = 1;
constexpr DISPID kEnablePlmLogin = 2;

class Dispatch : public testing::Test {
 protected:
  HRESULT Call(DISPID id, std::vector<VARIANT> arguments = {}, WORD flags = DISPATCH_METHOD) {
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    m_exception = {};
    const HRESULT called = m_addIn.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &m_result,
                                          &m_exception, &m_badArgument);
    m_source.Attach(m_exception.bstrSource);
    m_description.Attach(m_exception.bstrDescription);
    return called;
  }

  DISPID IdOf(const wchar_t* name) {
    LPOLESTR names = const_cast<LPOLESTR>(name);
    DISPID id = 0;
    const HRESULT found = m_addIn.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    EXPECT_EQ(found, id == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK);
    return id;
  }

  static VARIANT ByReference(long* value) {
    VARIANT argument{};
    V_VT(&argument) = VT_BYREF | VT_I4;
    V_I4REF(&argument) = value;
    return argument;
  }

  LinkedModule m_module;
  RecordingAddIn m_addIn;
  _variant_t m_result;
  EXCEPINFO m_exception{};
  CComBSTR m_source, m_description;
  UINT m_badArgument = 99;
};

}  // namespace

TEST_F(Dispatch, FindsEveryMethodWithoutRegardToCase) {
  for (DISPID id = 1; id <= 28; ++id) {
    const std::wstring name = kNames[id - 1];
    EXPECT_EQ(IdOf(name.c_str()), id);
    EXPECT_EQ(IdOf(CStringHelper::ToLower(name).c_str()), id);
  }
}

TEST_F(Dispatch, HasTheIdsOfTheTypeLibrary) {
  ITypeInfo* info = nullptr;
  ASSERT_EQ(m_addIn.GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
  for (const wchar_t* name : kNames) {
    LPOLESTR names = const_cast<LPOLESTR>(name);
    MEMBERID id = 0;
    EXPECT_EQ(info->GetIDsOfNames(&names, 1, &id), S_OK);
    EXPECT_EQ(IdOf(name), id);
  }
  info->Release();
}

TEST_F(Dispatch, FindsNoOtherNames) {
  for (const wchar_t* name : {L"", L"Plm", L"PlmLoginn", L"EnablePlmImportCurrent", L"EnablePlmLotimport",
                              L"ConnectToSW", L"Invoke"}) {
    EXPECT_EQ(IdOf(name), DISPID_UNKNOWN);
  }
}

TEST_F(Dispatch, RejectsNamedArguments) {
  LPOLESTR names[] = {const_cast<LPOLESTR>(L"EnablePlmLogin"), const_cast<LPOLESTR>(L"status")};
  DISPID ids[2] = {};
  EXPECT_EQ(m_addIn.GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[0], kEnablePlmLogin);
  EXPECT_EQ(ids[1], DISPID_UNKNOWN);

  long status = 0;
  VARIANT argument = ByReference(&status);
  DISPID named = 0;
  DISPPARAMS parameters{&argument, &named, 1, 1};
  EXPECT_EQ(m_addIn.Invoke(kEnablePlmLogin, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                           nullptr, nullptr, nullptr),
            DISP_E_NONAMEDARGS);
  EXPECT_EQ(m_addIn.Invoke(kPlmLogin, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                           nullptr, nullptr),
            DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(m_addIn.called, L"");
}

TEST_F(Dispatch, RejectsNullPointersAndAnInterfaceForNames) {
  LPOLESTR name = const_cast<LPOLESTR>(L"PlmLogin");
  DISPID id = 0;
  EXPECT_EQ(m_addIn.GetIDsOfNames(IID_IDispatch, &name, 1, 0, &id), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(m_addIn.GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id), E_INVALIDARG);
  EXPECT_EQ(m_addIn.GetIDsOfNames(IID_NULL, &name, 1, 0, nullptr), E_INVALIDARG);
  EXPECT_EQ(m_addIn.GetIDsOfNames(IID_NULL, &name, 0, 0, &id), E_INVALIDARG);
}

TEST_F(Dispatch, CallsTheMethodOfEachId) {
  for (DISPID id = 1; id <= 28; ++id) {
    m_addIn.called.clear();
    EXPECT_EQ(Call(id), S_OK) << id;
    EXPECT_EQ(m_addIn.called, std::wstring(kNames[id - 1]) + L" ");
  }
}

TEST_F(Dispatch, AcceptsOnlyFlagsThatContainMethod) {
  EXPECT_EQ(Call(kPlmLogin, {}, DISPATCH_METHOD | DISPATCH_PROPERTYGET), S_OK);
  EXPECT_EQ(m_addIn.called, L"PlmLogin ");
  for (const WORD flags : {DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, 0}) {
    EXPECT_EQ(Call(kPlmLogin, {}, flags), DISP_E_MEMBERNOTFOUND) << flags;
  }
  EXPECT_EQ(m_addIn.called, L"PlmLogin ");
}

TEST_F(Dispatch, RejectsOtherIds) {
  for (const DISPID id : {0, 29, -1, -5, 30, 0x60000000}) EXPECT_EQ(Call(id), DISP_E_MEMBERNOTFOUND) << id;
}

TEST_F(Dispatch, SetsTheArgumentOfAnEnableMethod) {
  for (const long status : {1L, 0L}) {
    m_addIn.status = status;
    long place = 42;
    EXPECT_EQ(Call(kEnablePlmLogin, {ByReference(&place)}), S_OK);
    EXPECT_EQ(place, status);
    EXPECT_EQ(m_result.vt, VT_EMPTY);
  }
}

TEST_F(Dispatch, ReturnsTheStatusAsTheResultIfNoArgumentIsPassed) {
  EXPECT_EQ(Call(kEnablePlmLogin), S_OK);
  ASSERT_EQ(m_result.vt, VT_I4);
  EXPECT_EQ(m_result.lVal, 1);
}

TEST_F(Dispatch, ReturnsNoResultForACommand) {
  V_VT(&m_result) = VT_I4;
  EXPECT_EQ(Call(kPlmLogin), S_OK);
  EXPECT_EQ(m_result.vt, VT_EMPTY);
}

TEST_F(Dispatch, AcceptsNullForTheResultAndTheException) {
  DISPPARAMS none{};
  for (const DISPID id : {kPlmLogin, kEnablePlmLogin}) {
    EXPECT_EQ(m_addIn.Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr), S_OK);
  }
  m_addIn.result = E_FAIL;
  EXPECT_EQ(m_addIn.Invoke(kPlmLogin, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
}

TEST_F(Dispatch, RejectsTooManyArguments) {
  long status = 0;
  EXPECT_EQ(Call(kPlmLogin, {ByReference(&status)}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Call(kEnablePlmLogin, {ByReference(&status), ByReference(&status)}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(m_addIn.called, L"");
}

TEST_F(Dispatch, RejectsArgumentsOtherThanALongByReference) {
  short small = 0;
  VARIANT by_value{}, by_reference{}, text{};
  V_VT(&by_value) = VT_I4;
  V_VT(&by_reference) = VT_BYREF | VT_I2;
  V_I2REF(&by_reference) = &small;
  V_VT(&text) = VT_BSTR;
  for (const VARIANT& argument : {by_value, by_reference, text}) {
    m_badArgument = 99;
    EXPECT_EQ(Call(kEnablePlmLogin, {argument}), DISP_E_TYPEMISMATCH) << argument.vt;
    EXPECT_EQ(m_badArgument, 0u);
  }
  EXPECT_EQ(m_addIn.called, L"");
}

TEST_F(Dispatch, RejectsAnInterfaceAndMissingParameters) {
  DISPPARAMS none{};
  EXPECT_EQ(m_addIn.Invoke(1, IID_IDispatch, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(m_addIn.Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
            E_INVALIDARG);
}

TEST_F(Dispatch, ReportsAFailedResultOnlyWithItsCode) {
  const auto no_answer = static_cast<HRESULT>(0xA3013005);
  m_addIn.result = no_answer;
  for (const DISPID id : {kPlmLogin, kEnablePlmLogin}) {
    EXPECT_EQ(Call(id), DISP_E_EXCEPTION);
    EXPECT_EQ(m_exception.scode, no_answer);
    EXPECT_EQ(m_exception.wCode, 0);
    EXPECT_FALSE(m_description);
    EXPECT_EQ(m_result.vt, VT_EMPTY);
  }
}

TEST_F(Dispatch, ReturnsOkForAnySuccessCode) {
  m_addIn.result = S_FALSE;
  EXPECT_EQ(Call(kPlmLogin), S_OK);
}

TEST_F(Dispatch, ReportsAnExceptionWithCodeAndText) {
  const struct {
    void (*raise)();
    HRESULT code;
    const wchar_t* text;
  } cases[] = {
      {[] { throw CZALException(static_cast<long>(0xA3013000), L"member 名 is missing"); },
       static_cast<HRESULT>(0xA3013000), L"member 名 is missing"},
      {[] { throw std::runtime_error("r\xC3\xA9sum\xC3\xA9"); }, E_FAIL, L"r\u00E9sum\u00E9"},
      {[] { throw std::bad_alloc(); }, E_OUTOFMEMORY, L"out of memory"},
      {[] { throw 1; }, E_FAIL, L"unknown exception"},
  };
  for (const auto& c : cases) {
    m_addIn.raise = c.raise;
    for (const DISPID id : {kPlmLogin, kEnablePlmLogin}) {
      EXPECT_EQ(Call(id), DISP_E_EXCEPTION);
      EXPECT_EQ(m_exception.scode, c.code);
      EXPECT_EQ(m_description.View(), c.text);
      EXPECT_EQ(m_source.View(), L"solidworks_add_in");
    }
  }
}

TEST_F(Dispatch, ReportsAComErrorWithTheSystemsText) {
  m_addIn.raise = [] { _com_issue_error(E_POINTER); };
  EXPECT_EQ(Call(kPlmLogin), DISP_E_EXCEPTION);
  EXPECT_EQ(m_exception.scode, E_POINTER);
  EXPECT_EQ(m_description.View(), _com_error(E_POINTER).ErrorMessage());
}

TEST_F(Dispatch, LogsAnExceptionOnceAndAFailedResultNever) {
  const std::size_t before = Log().size();
  m_addIn.raise = [] { throw CZALException(static_cast<long>(0xA3013000), L"member is missing"); };
  Call(kEnablePlmLogin);
  m_addIn.raise = nullptr;
  m_addIn.result = E_ABORT;
  Call(kPlmLogin);
  const std::wstring text = Log().substr(before);
  EXPECT_NE(text.find(L"ISolidWorksAddIn::EnablePlmLogin raised 0xa3013000: member is missing"), text.npos);
  EXPECT_NE(text.find(L"platform"), text.npos);
  EXPECT_EQ(std::count(text.begin(), text.end(), L'\n'), 1) << CStringHelper::UnicodeToUTF8(text);
}

TEST_F(Dispatch, DescribesTheInterface) {
  UINT count = 0;
  EXPECT_EQ(m_addIn.GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(m_addIn.GetTypeInfoCount(nullptr), E_POINTER);
  ITypeInfo* info = nullptr;
  ASSERT_EQ(m_addIn.GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, __uuidof(ISolidWorksAddIn));
  info->ReleaseTypeAttr(attributes);
  info->Release();
  EXPECT_EQ(m_addIn.GetTypeInfo(1, LOCALE_USER_DEFAULT, &info), DISP_E_BADINDEX);
  EXPECT_EQ(info, nullptr);
  EXPECT_EQ(m_addIn.GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
}

TEST(DispatchOfTheAddIn, LetsNoExceptionReachTheHost) {
  const ComApartment com;
  const AddInDll dll;
  IClassFactory* factory = nullptr;
  ASSERT_EQ(dll.GetClassObject(CLSID_SwAddin, IID_PPV_ARGS(&factory)), S_OK);
  IDispatchPtr add_in;
  ASSERT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&add_in)), S_OK);
  factory->Release();
  DISPPARAMS none{};
  EXCEPINFO exception{};
  // Before a connection, a command has no connection to the PLM client.
  EXPECT_EQ(add_in->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, &exception, nullptr),
            DISP_E_EXCEPTION);
  EXPECT_EQ(exception.scode, E_POINTER);
  const _bstr_t source(exception.bstrSource, false), description(exception.bstrDescription, false);
  EXPECT_GT(description.length(), 0u);
  _variant_t enabled;
  EXPECT_EQ(add_in->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, &none, &enabled, nullptr, nullptr), S_OK);
  EXPECT_EQ(enabled.lVal, 1);
}
