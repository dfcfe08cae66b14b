#include "type_library.h"

#include <comdef.h>
#include <oleauto.h>

#include <string>

#include "CComBSTR.h"
#include "base/com_pointers.h"
#include "com_boundary.h"
#include "com_module.h"
#include "solidworks_add_in_h.h"

namespace {

HRESULT Load(const std::wstring& path, ITypeLib** library) {
  return LoadTypeLibEx(path.c_str(), REGKIND_NONE, library);
}

}  // namespace

HRESULT type_library::GetInterfaceInfo(REFIID iid, ITypeInfo** info) noexcept {
  if (!info) return E_POINTER;
  *info = nullptr;
  return EndExceptions(L"reading the type library", [&] {
    ITypeLibPtr library;
    const HRESULT loaded = Load(CSolidWorksAddInModule::Instance().Path(), &library);
    return FAILED(loaded) ? loaded : library->GetTypeInfoOfGuid(iid, info);
  });
}

HRESULT type_library::CountInterfaceInfo(UINT* count) noexcept {
  if (!count) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT type_library::Register() noexcept {
  return EndExceptions(L"registering the type library", [] {
    std::wstring path = CSolidWorksAddInModule::Instance().Path();
    std::wstring folder = path.substr(0, path.find_last_of(L'\\'));
    ITypeLibPtr library;
    const HRESULT loaded = Load(path, &library);
    return FAILED(loaded) ? loaded : RegisterTypeLib(library, path.data(), folder.data());
  });
}

HRESULT type_library::Unregister() noexcept {
  return EndExceptions(L"unregistering the type library", []() -> HRESULT {
    ITypeLibPtr library;
    const HRESULT loaded = Load(CSolidWorksAddInModule::Instance().Path(), &library);
    if (FAILED(loaded)) return loaded;
    TLIBATTR* attributes = nullptr;
    const HRESULT read = library->GetLibAttr(&attributes);
    if (FAILED(read)) return read;
    const TLIBATTR id = *attributes;
    library->ReleaseTLibAttr(attributes);
    // Not all systems return the same code for a library that is not registered.
    CComBSTR registered;
    if (FAILED(QueryPathOfRegTypeLib(id.guid, id.wMajorVerNum, id.wMinorVerNum, id.lcid, &registered))) {
      return S_OK;
    }
    return UnRegisterTypeLib(id.guid, id.wMajorVerNum, id.wMinorVerNum, id.lcid, id.syskind);
  });
}
