// Failures and exceptions of methods that the host calls by name.
#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>

#include "CStringHelper.h"
#include "CZALException.h"
#include "add_in_dll.h"
#include "base/com_pointers.h"
#include "dispatch_fixture.h"
#include "environment.h"
#include "temp_folder.h"

namespace {

// The first exception sets up the log, once for the program.
const TempFolder kPlatformFolder;
const ScopedEnvironment kPlatformHome(L"TAVO_HOME", kPlatformFolder.Path());

std::wstring Log() {
  const wchar_t* const name = L"log\\SolidWorks.log";
  return kPlatformFolder.Exists(name) ? kPlatformFolder.ReadText(name) : L"";
}

class DispatchFailure : public DispatchFixture {};

}  // namespace

TEST_F(DispatchFailure, ReportsAFailedResultOnlyWithItsCode) {
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

TEST_F(DispatchFailure, ReturnsOkForAnySuccessCode) {
  m_addIn.result = S_FALSE;
  EXPECT_EQ(Call(kPlmLogin), S_OK);
}

TEST_F(DispatchFailure, ReportsAnExceptionWithCodeAndText) {
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

TEST_F(DispatchFailure, ReportsAComErrorWithTheSystemsText) {
  m_addIn.raise = [] { _com_issue_error(E_ACCESSDENIED); };
  EXPECT_EQ(Call(kPlmLogin), DISP_E_EXCEPTION);
  EXPECT_EQ(m_exception.scode, E_ACCESSDENIED);
  EXPECT_EQ(m_description.View(), _com_error(E_ACCESSDENIED).ErrorMessage());
}

TEST_F(DispatchFailure, LogsAnExceptionOnceAndAFailedResultNever) {
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
