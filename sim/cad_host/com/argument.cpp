#include "argument.h"

#include <algorithm>
#include <cwchar>
#include <new>

#include "host_object.h"

namespace cad_host {
namespace {

std::wstring TextOfElement(SAFEARRAY* array, VARTYPE type, LONG index) {
  if (type == VT_BSTR) {
    BSTR text = nullptr;
    SafeArrayGetElement(array, &index, &text);
    std::wstring result = TextOf(text);
    SysFreeString(text);
    return result;
  }
  long number = 0;
  if (type == VT_I4) SafeArrayGetElement(array, &index, &number);
  return TextOf(number);
}

std::wstring TextOfArray(SAFEARRAY* array, VARTYPE type) {
  LONG first = 0;
  LONG last = -1;
  SafeArrayGetLBound(array, 1, &first);
  SafeArrayGetUBound(array, 1, &last);
  std::wstring text;
  for (LONG index = first; index <= last; ++index) {
    text += (text.empty() ? L"" : L", ") + TextOfElement(array, type, index);
  }
  return L"[" + text + L"]";
}

std::wstring TextOfList(const auto* values, long count) {
  if (!values) return L"null";
  std::wstring text;
  for (long index = 0; index < count; ++index) text += (index ? L", " : L"") + TextOf(values[index]);
  return L"[" + text + L"]";
}

template <class T>
Argument OutArray(T* places, long count) {
  const auto clear = [places, count] {
    if (count > 0) std::fill_n(places, count, T{});
  };
  return {.is_result = true,
          .is_given = places != nullptr,
          .text = [places, count] { return TextOfList(places, count); },
          .clear = clear,
          .take_back = clear,
          .place = places};
}

}  // namespace

std::wstring Text(BSTR value) { return std::wstring(value ? value : L"", SysStringLen(value)); }

std::wstring TextOf(BSTR value) { return value ? L"\"" + Text(value) + L"\"" : L"null"; }

std::wstring TextOf(DWORD value) { return std::to_wstring(value); }

std::wstring TextOf(REFIID value) { return InterfaceName(value); }

std::wstring TextOf(long value) { return std::to_wstring(value); }

std::wstring TextOf(VARIANT_BOOL value) { return value ? L"true" : L"false"; }

std::wstring TextOf(double value) {
  wchar_t text[32];
  std::swprintf(text, std::size(text), L"%g", value);
  return text;
}

std::wstring TextOf(const VARIANT& value) {
  if (value.vt & VT_ARRAY) return TextOfArray(value.parray, value.vt & VT_TYPEMASK);
  switch (value.vt) {
    case VT_EMPTY:
      return L"empty";
    case VT_BSTR:
      return TextOf(value.bstrVal);
    case VT_I4:
      return TextOf(value.lVal);
    case VT_BOOL:
      return TextOf(value.boolVal);
    case VT_DISPATCH:
      return TextOf(static_cast<IUnknown*>(value.pdispVal));
    default:
      return L"a value of type " + std::to_wstring(value.vt);
  }
}

std::wstring TextOf(IUnknown* object) {
  if (!object) return L"null";
  const HostObject* const own = HostObject::From(object);
  return own ? own->Describe() : L"an object of the add-in";
}

Argument In(const long* values, long count) {
  return {.is_given = values || count <= 0,
          .text = [values, count] { return TextOfList(values, count); },
          .clear = nullptr,
          .take_back = nullptr};
}

Argument Out(BSTR* place) {
  return {.is_result = true,
          .is_given = place != nullptr,
          .text = [place] { return TextOf(*place); },
          .clear = [place] { *place = nullptr; },
          .take_back =
              [place] {
                SysFreeString(*place);
                *place = nullptr;
              },
          .place = place};
}

Argument Out(long* places, long count) { return OutArray(places, count); }

Argument Out(double* places, long count) { return OutArray(places, count); }

Argument Out(VARIANT* place) {
  Argument argument = InOut(place);
  argument.clear = [place] { VariantInit(place); };
  return argument;
}

Argument InOut(VARIANT* place) {
  const auto clear = [place] { VariantClear(place); };
  return {.is_result = true,
          .is_given = place != nullptr,
          .text = [place] { return TextOf(*place); },
          .clear = clear,
          .take_back = clear,
          .place = place};
}

void Give(BSTR* place, std::wstring_view text) {
  *place = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (!*place) throw std::bad_alloc();
}

}  // namespace cad_host
