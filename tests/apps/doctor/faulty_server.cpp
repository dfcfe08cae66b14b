// A COM server that does what the name of its file says, in place of creating a class object.
#include <windows.h>

#include <string>
#include <string_view>

namespace {

HMODULE self;

std::wstring OwnName() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(self, path, MAX_PATH);
  const std::wstring_view name(path);
  return std::wstring(name.substr(name.find_last_of(L'\\') + 1));
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE handle, DWORD, void*) {
  self = handle;
  return TRUE;
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllGetClassObject(const CLSID&, const IID&, void** object) {
  const std::wstring name = OwnName();
  *object = nullptr;
  if (name == L"crash.dll") *reinterpret_cast<volatile int*>(8) = 1;
  if (name == L"exit.dll") ExitProcess(0);
  if (name == L"hang.dll") Sleep(INFINITE);
  return E_OUTOFMEMORY;
}
