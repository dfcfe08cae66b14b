// The DLL's entry point and its four exports.
#include <windows.h>

#include "module/application.h"
#include "module/bitmap_handler.h"
#include "module/com_module.h"
#include "module/com_object.h"
#include "resources/resource_ids.h"
#include "solidworks_add_in.h"

namespace {

template <class T>
HRESULT Create(REFIID iid, void** object) {
  return CreateComObject<T>(iid, object);
}

const CreatableClass kCreatableClasses[] = {
    {CLSID_SwAddin, IDR_SOLIDWORKS_ADD_IN, Create<CSolidWorksAddIn>},
    {CLSID_BitmapHandler, IDR_BITMAP_HANDLER, Create<CBitmapHandler>},
};

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE handle, DWORD reason, void*) {
  CSolidWorksAddInApp& application = CSolidWorksAddInApp::Instance();
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      CSolidWorksAddInModule::Instance().Attach(handle, kCreatableClasses);
      return application.InitInstance();
    case DLL_PROCESS_DETACH:
      application.ExitInstance();
      break;
  }
  return TRUE;
}

/// S_OK if no object lives, no lock is held and no thread is inside a method.
STDAPI DllCanUnloadNow() {
  return EndExceptions(L"DllCanUnloadNow", [] {
    const bool unused =
        CSolidWorksAddInApp::Instance().CanUnload() && CSolidWorksAddInModule::Instance().LockCount() == 0;
    return unused ? S_OK : S_FALSE;
  });
}

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
  if (object) *object = nullptr;
  // Every host comes through here first, on the thread on which it calls the add-in later.
  if (!PrepareForExceptions()) return E_OUTOFMEMORY;
  return EndExceptions(L"DllGetClassObject",
                       [&] { return CSolidWorksAddInModule::Instance().GetClassObject(id, iid, object); });
}

STDAPI DllRegisterServer() {
  return EndExceptions(L"DllRegisterServer", [] { return CSolidWorksAddInModule::Instance().Register(); });
}

STDAPI DllUnregisterServer() {
  return EndExceptions(L"DllUnregisterServer",
                       [] { return CSolidWorksAddInModule::Instance().Unregister(); });
}
