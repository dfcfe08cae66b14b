#include "dispatch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "exception_info.h"
#include "type_library.h"

namespace {

/// A command and its enable method. Row r has the dispatch ids 2r + 1 and 2r + 2.
struct MethodPair {
  const wchar_t* command_name;
  HRESULT (STDMETHODCALLTYPE ISolidWorksAddIn::*command)();
  const wchar_t* enable_name;
  HRESULT (STDMETHODCALLTYPE ISolidWorksAddIn::*enable)(LONG* status);
};

using I = ISolidWorksAddIn;
constexpr MethodPair kMethods[] = {
    {L"PlmLogin", &I::PlmLogin, L"EnablePlmLogin", &I::EnablePlmLogin},
    {L"PlmLogOut", &I::PlmLogOut, L"EnablePlmLogOut", &I::EnablePlmLogOut},
    {L"OpenDataSelector", &I::OpenDataSelector, L"EnableOpenDataSelector", &I::EnableOpenDataSelector},
    {L"PlmMyCheckOutList", &I::PlmMyCheckOutList, L"EnablePlmMyCheckOutList", &I::EnablePlmMyCheckOutList},
    {L"PlmWf", &I::PlmWf, L"EnablePlmWf", &I::EnablePlmWf},
    {L"PlmCode", &I::PlmCode, L"EnablePlmCode", &I::EnablePlmCode},
    {L"PlmQuery", &I::PlmQuery, L"EnablePlmQuery", &I::EnablePlmQuery},
    {L"PlmImportCurrent", &I::PlmImportCurrent, L"EnableImportCurrent", &I::EnableImportCurrent},
    {L"PlmLotimport", &I::PlmLotimport, L"EnableLotimport", &I::EnableLotimport},
    {L"PlmCreateMaterial", &I::PlmCreateMaterial, L"EnablePlmCreateMaterial", &I::EnablePlmCreateMaterial},
    {L"PlmMyTempMaterial", &I::PlmMyTempMaterial, L"EnablePlmMyTempMaterial", &I::EnablePlmMyTempMaterial},
    {L"PlmTaskManage", &I::PlmTaskManage, L"EnablePlmTaskManage", &I::EnablePlmTaskManage},
    {L"PlmMaterialBackFill", &I::PlmMaterialBackFill, L"EnablePlmMaterialBackFill",
     &I::EnablePlmMaterialBackFill},
    {L"PlmImportChangeItem", &I::PlmImportChangeItem, L"EnablePlmImportChangeItem",
     &I::EnablePlmImportChangeItem},
};

constexpr DISPID kFirstId = 1;
constexpr DISPID kLastId = 2 * std::size(kMethods);

constexpr const MethodPair& PairOf(DISPID id) { return kMethods[(id - kFirstId) / 2]; }
constexpr bool IsEnable(DISPID id) { return id % 2 == 0; }
constexpr const wchar_t* NameOf(DISPID id) {
  return IsEnable(id) ? PairOf(id).enable_name : PairOf(id).command_name;
}

// The names are ASCII, so no other character is equal to one of theirs but for case.
constexpr wchar_t LowerCase(wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c | 0x20) : c; }

constexpr bool SameName(std::wstring_view a, std::wstring_view b) {
  return std::ranges::equal(a, b, {}, LowerCase, LowerCase);
}

/// A number that is the same for names that are equal but for case, and another for each of the add-in's.
constexpr std::size_t HashOf(std::wstring_view name) {
  std::size_t hash = name.size();
  for (const wchar_t c : name) hash = hash * 31 + static_cast<std::size_t>(LowerCase(c));
  return hash;
}

// The host asks for the ids of all enable methods whenever it is idle: a table finds each at once.
constexpr std::size_t kBuckets = 256;
constexpr auto kIdByHash = [] {
  std::array<unsigned char, kBuckets> ids{};
  for (DISPID id = kFirstId; id <= kLastId; ++id) {
    unsigned char& place = ids[HashOf(NameOf(id)) % kBuckets];
    if (place != 0) throw "two names share a place: choose another hash";  // does not compile
    place = static_cast<unsigned char>(id);
  }
  return ids;
}();

DISPID FindId(std::wstring_view name) {
  const DISPID id = kIdByHash[HashOf(name) % kBuckets];
  return id != 0 && SameName(name, NameOf(id)) ? id : DISPID_UNKNOWN;
}

/// Whether the method `id` can be called with these arguments. @return S_OK or the code to return.
HRESULT CheckCall(DISPID id, WORD flags, const DISPPARAMS& parameters, UINT* bad_argument) {
  if (id < kFirstId || id > kLastId || !(flags & DISPATCH_METHOD)) return DISP_E_MEMBERNOTFOUND;
  if (parameters.cArgs > (IsEnable(id) ? 1u : 0u)) return DISP_E_BADPARAMCOUNT;
  if (parameters.cNamedArgs > 0) return DISP_E_NONAMEDARGS;
  if (parameters.cArgs == 1 && V_VT(&parameters.rgvarg[0]) != (VT_BYREF | VT_I4)) {
    if (bad_argument) *bad_argument = 0;
    return DISP_E_TYPEMISMATCH;
  }
  return S_OK;
}

HRESULT CallEnable(ISolidWorksAddIn& target, DISPID id, const DISPPARAMS& parameters, VARIANT* result) {
  LONG status = 0;
  LONG* const place = parameters.cArgs == 1 ? V_I4REF(&parameters.rgvarg[0]) : &status;
  const HRESULT called = (target.*PairOf(id).enable)(place);
  if (SUCCEEDED(called) && place == &status && result) {
    V_VT(result) = VT_I4;
    V_I4(result) = status;
  }
  return called;
}

}  // namespace

namespace add_in_dispatch {

HRESULT GetTypeInfoCount(UINT* count) noexcept { return type_library::CountInterfaceInfo(count); }

HRESULT GetTypeInfo(UINT index, LCID, ITypeInfo** info) noexcept {
  if (!info) return E_POINTER;
  *info = nullptr;
  return index == 0 ? type_library::GetInterfaceInfo(__uuidof(ISolidWorksAddIn), info) : DISP_E_BADINDEX;
}

HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) noexcept {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!names || !ids || count == 0) return E_INVALIDARG;
  ids[0] = names[0] ? FindId(names[0]) : DISPID_UNKNOWN;
  for (UINT argument = 1; argument < count; ++argument) ids[argument] = DISPID_UNKNOWN;
  return ids[count - 1] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
}

bool IsCommand(const std::wstring& name) noexcept {
  const DISPID id = FindId(name);
  return id != DISPID_UNKNOWN && !IsEnable(id);
}

bool IsEnableMethod(const std::wstring& name) noexcept {
  const DISPID id = FindId(name);
  return id != DISPID_UNKNOWN && IsEnable(id);
}

HRESULT Invoke(ISolidWorksAddIn& target, DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters,
               VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) noexcept {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!parameters) return E_INVALIDARG;
  if (result) VariantInit(result);
  const HRESULT checked = CheckCall(id, flags, *parameters, bad_argument);
  if (FAILED(checked)) return checked;
  try {
    const HRESULT called =
        IsEnable(id) ? CallEnable(target, id, *parameters, result) : (target.*PairOf(id).command)();
    return FAILED(called) ? ReturnFailure(called, exception) : S_OK;
  } catch (...) {
    return ReturnException(L"ISolidWorksAddIn", NameOf(id), exception);
  }
}

}  // namespace add_in_dispatch
