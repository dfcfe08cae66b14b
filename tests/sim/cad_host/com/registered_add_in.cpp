#include "registered_add_in.h"

#include <gtest/gtest.h>

namespace {

std::wstring Key() { return std::wstring(L"SOFTWARE\\SolidWorks\\AddIns\\") + RegisteredAddIn::kClsid; }

void SetValue(const wchar_t* name, DWORD type, const void* data, std::size_t size) {
  const LSTATUS status =
      RegSetKeyValueW(HKEY_LOCAL_MACHINE, Key().c_str(), name, type, data, static_cast<DWORD>(size));
  EXPECT_EQ(status, ERROR_SUCCESS);
}

void SetText(const wchar_t* name, const std::wstring& text) {
  SetValue(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

}  // namespace

RegisteredAddIn::RegisteredAddIn(const std::wstring& title, ISwAddin* object) : m_factory(object) {
  CLSID clsid{};
  CLSIDFromString(kClsid, &clsid);
  EXPECT_EQ(CoRegisterClassObject(clsid, &m_factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie),
            S_OK);
  const DWORD at_start = 1;
  SetValue(nullptr, REG_DWORD, &at_start, sizeof at_start);
  SetText(L"Title", title);
  SetText(L"Description", kDescription);
}

RegisteredAddIn::~RegisteredAddIn() {
  CoRevokeClassObject(m_cookie);
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, Key().c_str());
}

STDMETHODIMP RegisteredAddIn::Factory::QueryInterface(REFIID iid, void** object) {
  const bool known = iid == __uuidof(IUnknown) || iid == __uuidof(IClassFactory);
  *object = known ? this : nullptr;
  return known ? S_OK : E_NOINTERFACE;
}
