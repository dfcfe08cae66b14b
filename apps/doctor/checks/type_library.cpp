// The registration of the type library.
#include <windows.h>

#include <oleauto.h>

#include "CComBSTR.h"
#include "CStringHelper.h"
#include "base/com_pointers.h"
#include "base/hex_code.h"
#include "base/system_text.h"
#include "checks.h"

namespace doctor {
namespace {

constexpr wchar_t kRegister[] = L"Register the library again, as an administrator.";

std::wstring WithResult(const std::wstring& text, HRESULT result) {
  return text + L": " + SystemText(static_cast<DWORD>(result)) + L" (" + HexCode(result) + L")";
}

/// Where the library with the identity `id` is registered; empty if it is not.
std::wstring RegisteredPlace(const TLIBATTR& id) {
  CComBSTR path;
  if (FAILED(QueryPathOfRegTypeLib(id.guid, id.wMajorVerNum, id.wMinorVerNum, id.lcid, &path))) return {};
  const std::wstring text(path.View());
  return text.substr(0, text.find(L'\0'));  // some systems count the terminator
}

void CheckPlace(const std::wstring& place, const std::wstring& expected, Report& report) {
  if (CStringHelper::StringCompare(place, expected, false) == 0) {
    report.Ok("type_library.path", L"The registered type library is the one in the add-in's library.");
  } else {
    report.Fail("type_library.path", L"The registered type library is " + place + L", not " + expected + L".",
                kRegister);
  }
  ITypeLibPtr library;
  const HRESULT loaded = LoadTypeLibEx(place.c_str(), REGKIND_NONE, &library);
  if (SUCCEEDED(loaded)) {
    report.Ok("type_library.content", L"The registered type library can be loaded.");
  } else {
    report.Fail("type_library.content",
                WithResult(L"The registered type library " + place + L" cannot be loaded", loaded),
                kRegister);
  }
}

}  // namespace

void CheckTypeLibrary(const Patient& patient, Report& report) {
  ITypeLibPtr library;
  const HRESULT loaded = LoadTypeLibEx(patient.add_in.Path().c_str(), REGKIND_NONE, &library);
  TLIBATTR* attributes = nullptr;
  if (FAILED(loaded) || FAILED(library->GetLibAttr(&attributes))) {
    report.PassOver("type_library.registered",
                    L"There is no library whose type library could be looked for.");
    return;
  }
  const TLIBATTR id = *attributes;
  library->ReleaseTLibAttr(attributes);
  const std::wstring place = RegisteredPlace(id);
  if (place.empty()) {
    report.Fail("type_library.registered", L"The type library " + GuidText(id.guid) + L" is not registered.",
                kRegister);
    return;
  }
  report.Ok("type_library.registered", L"The type library is registered: " + place + L".");
  CheckPlace(place, patient.add_in.Path(), report);
}

}  // namespace doctor
