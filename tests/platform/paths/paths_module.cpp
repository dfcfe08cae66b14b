// A DLL, in another folder than the program, that asks for the path of a configuration file.
#include <windows.h>

#include <oleauto.h>

#include "CZALCADPathHelper.h"

extern "C" __declspec(dllexport) BSTR ConfigurationFile(const wchar_t* name, const wchar_t* file) {
  std::wstring path;
  CZALCADPathHelper::GetCADCfgPath(name, file, path);
  return SysAllocString(path.c_str());
}
