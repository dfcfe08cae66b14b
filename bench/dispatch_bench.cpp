// What the host does for each item at every idle moment: it looks its enable method up by name and calls it.
#include <benchmark/benchmark.h>

#include <windows.h>

#include <comdef.h>
#include <oleauto.h>

#include <stdexcept>
#include <string>

#include "base/com_pointers.h"
#include "base/module_path.h"
#include "solidworks_add_in_h.h"

namespace {

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

void Check(HRESULT result) {
  if (FAILED(result)) _com_raise_error(result);
}

std::wstring DllPath() {
  std::wstring path = ModulePath(nullptr);
  path.resize(path.find_last_of(L'\\'));
  return path.substr(0, path.find_last_of(L'\\')) + L"\\bin\\solidworks_add_in.dll";
}

/// The add-in, from its DLL and not through the registry.
ISolidWorksAddIn* CreateAddIn() {
  const HMODULE dll = LoadLibraryW(DllPath().c_str());
  if (!dll) throw std::runtime_error("the add-in's DLL is missing");
  const auto get =
      reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(dll, "DllGetClassObject")));
  IClassFactory* factory = nullptr;
  Check(get(CLSID_SwAddin, IID_PPV_ARGS(&factory)));
  ISolidWorksAddIn* add_in = nullptr;
  Check(factory->CreateInstance(nullptr, IID_PPV_ARGS(&add_in)));
  return add_in;
}

wchar_t method_name[] = L"EnablePlmMaterialBackFill";

/// The system's means: the type information that the add-in gives, as a standard dispatch implementation uses
/// it.
struct SystemDispatch {
  explicit SystemDispatch(ISolidWorksAddIn* target) : add_in(target) {
    Check(add_in->GetTypeInfo(0, 0, &info));
  }
  HRESULT GetIds(wchar_t** names, DISPID* id) const { return DispGetIDsOfNames(info, names, 1, id); }
  HRESULT Invoke(DISPID id, DISPPARAMS* parameters) const {
    return DispInvoke(add_in, info, id, DISPATCH_METHOD, parameters, nullptr, nullptr, nullptr);
  }
  ISolidWorksAddIn* add_in;
  ITypeInfo* info = nullptr;
};

struct OwnDispatch {
  explicit OwnDispatch(ISolidWorksAddIn* target) : add_in(target) {}
  HRESULT GetIds(wchar_t** names, DISPID* id) const {
    return add_in->GetIDsOfNames(IID_NULL, names, 1, 0, id);
  }
  HRESULT Invoke(DISPID id, DISPPARAMS* parameters) const {
    return add_in->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, parameters, nullptr, nullptr, nullptr);
  }
  ISolidWorksAddIn* add_in;
};

template <class Dispatch>
void Enable(benchmark::State& state) {
  const Dispatch dispatch(CreateAddIn());
  LONG status = -1;
  for (auto _ : state) {
    wchar_t* names[] = {method_name};
    DISPID id = 0;
    Check(dispatch.GetIds(names, &id));
    VARIANTARG argument{};
    V_VT(&argument) = VT_BYREF | VT_I4;
    V_I4REF(&argument) = &status;
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    Check(dispatch.Invoke(id, &parameters));
  }
  if (status != 0) state.SkipWithError("the method was not called");
}

BENCHMARK(Enable<OwnDispatch>)->Name("enable/ours")->UseRealTime();
BENCHMARK(Enable<SystemDispatch>)->Name("enable/system")->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
