/// @file The dispatch interface, called with an add-in that records its calls.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "CComBSTR.h"
#include "linked_module.h"
#include "recording_add_in.h"

inline constexpr DISPID kPlmLogin = 1;
inline constexpr DISPID kEnablePlmLogin = 2;

/// Calls an add-in that records its calls, as the host does.
class DispatchFixture : public testing::Test {
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
