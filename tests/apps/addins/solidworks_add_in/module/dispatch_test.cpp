// The dispatch interface, through which the host calls the add-in by name.
#include <gtest/gtest.h>

#include <string>

#include "CStringHelper.h"
#include "add_in_methods.h"
#include "dispatch_fixture.h"

namespace {

class Dispatch : public DispatchFixture {};

}  // namespace

TEST_F(Dispatch, FindsEveryMethodWithoutRegardToCase) {
  for (DISPID id = 1; id <= 28; ++id) {
    const std::wstring name = kMethodNames[id - 1];
    EXPECT_EQ(IdOf(name.c_str()), id);
    EXPECT_EQ(IdOf(CStringHelper::ToLower(name).c_str()), id);
  }
}

TEST_F(Dispatch, HasTheIdsOfTheTypeLibrary) {
  ITypeInfo* info = nullptr;
  ASSERT_EQ(m_addIn.GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
  for (const wchar_t* name : kMethodNames) {
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
    EXPECT_EQ(m_addIn.called, std::wstring(kMethodNames[id - 1]) + L" ");
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
