#include "add_in_dll.h"

#include <stdexcept>

#include "CStringHelper.h"

AddInDll::AddInDll(const std::wstring& path) : m_path(path), m_handle(LoadLibraryW(path.c_str())) {
  if (!m_handle) throw std::runtime_error("cannot load " + CStringHelper::UnicodeToUTF8(path));
}

AddInDll::~AddInDll() { FreeLibrary(m_handle); }

std::wstring AddInDll::BuiltPath() {
  wchar_t test[MAX_PATH];
  GetModuleFileNameW(nullptr, test, MAX_PATH);
  wchar_t path[MAX_PATH];
  const std::wstring folder = std::wstring(test).substr(0, std::wstring(test).find_last_of(L'\\'));
  GetFullPathNameW((folder + L"\\..\\bin\\solidworks_add_in.dll").c_str(), MAX_PATH, path, nullptr);
  return path;
}

HRESULT AddInDll::CanUnloadNow() const { return Export<HRESULT WINAPI()>("DllCanUnloadNow")(); }

HRESULT AddInDll::GetClassObject(REFCLSID id, REFIID iid, void** object) const {
  return Export<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(id, iid, object);
}

HRESULT AddInDll::RegisterServer() const { return Export<HRESULT WINAPI()>("DllRegisterServer")(); }

HRESULT AddInDll::UnregisterServer() const { return Export<HRESULT WINAPI()>("DllUnregisterServer")(); }
