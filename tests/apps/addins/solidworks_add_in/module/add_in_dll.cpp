#include "add_in_dll.h"

#include <stdexcept>

#include "CStringHelper.h"
#include "program_folder.h"

AddInDll::AddInDll(const std::wstring& path) : m_path(path), m_handle(LoadLibraryW(path.c_str())) {
  if (!m_handle) throw std::runtime_error("cannot load " + CStringHelper::UnicodeToUTF8(path));
}

AddInDll::~AddInDll() { FreeLibrary(m_handle); }

std::wstring AddInDll::BuiltPath() { return InBin(L"solidworks_add_in.dll"); }

HRESULT AddInDll::CanUnloadNow() const { return Export<HRESULT WINAPI()>("DllCanUnloadNow")(); }

HRESULT AddInDll::GetClassObject(REFCLSID id, REFIID iid, void** object) const {
  return Export<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(id, iid, object);
}

HRESULT AddInDll::RegisterServer() const { return Export<HRESULT WINAPI()>("DllRegisterServer")(); }

HRESULT AddInDll::UnregisterServer() const { return Export<HRESULT WINAPI()>("DllUnregisterServer")(); }
