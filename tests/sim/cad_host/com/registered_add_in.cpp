#include "registered_add_in.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "base/unique_registry_key.h"
#include "base/utf8.h"

namespace {

std::wstring Key() { return std::wstring(L"SOFTWARE\\SolidWorks\\AddIns\\") + RegisteredAddIn::kClsid; }

// One that exists already is somebody else's, and must not be removed.
void MakeNewKey() {
  HKEY key = nullptr;
  DWORD disposition = 0;
  RegCreateKeyExW(HKEY_LOCAL_MACHINE, Key().c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr,
                  &key, &disposition);
  const UniqueRegistryKey owner(key);
  if (disposition != REG_CREATED_NEW_KEY)
    throw std::runtime_error("no new key: " + utf8::Encode<wchar_t>(Key()));
}

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
  MakeNewKey();
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
