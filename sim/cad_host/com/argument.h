/// @file The arguments of an interface call: their texts for the journal, and how a fault clears results.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>
#include <string>
#include <string_view>

namespace cad_host {

/// One argument of a call.
struct Argument {
  bool is_result = false;
  bool is_given = true;                ///< false: the pointer for a result is null
  std::function<std::wstring()> text;  ///< its current value
  std::function<void()> clear;         ///< before the call: sets a result to null, false or 0
  std::function<void()> take_back;     ///< after the call: frees a result and clears it
  void* place = nullptr;               ///< the address of a result
};

/// `"text"`; `null` for a null BSTR.
std::wstring TextOf(BSTR value);
std::wstring TextOf(long value);
std::wstring TextOf(VARIANT_BOOL value);
std::wstring TextOf(double value);
std::wstring TextOf(const VARIANT& value);
std::wstring TextOf(DWORD value);
std::wstring TextOf(REFIID value);
/// The description of an object of the host; "an object of the add-in" for any other object.
std::wstring TextOf(IUnknown* object);

/// An input argument.
template <class T>
Argument In(T value) {
  return {.text = [value] { return TextOf(value); }, .clear = nullptr, .take_back = nullptr};
}

/// An input array.
Argument In(const long* values, long count);

/// An output argument; the caller has not initialised it.
template <class T>
Argument Out(T* place) {
  const auto clear = [place] { *place = T{}; };
  return {.is_result = true,
          .is_given = place != nullptr,
          .text = [place] { return TextOf(*place); },
          .clear = clear,
          .take_back = clear,
          .place = place};
}
Argument Out(BSTR* place);

/// An output array, allocated by the caller.
Argument Out(long* places, long count);
Argument Out(double* places, long count);

template <class Interface>
Argument Out(Interface** place) {
  return {.is_result = true,
          .is_given = place != nullptr,
          .text = [place] { return TextOf(static_cast<IUnknown*>(*place)); },
          .clear = [place] { *place = nullptr; },
          .take_back =
              [place] {
                if (*place) (*place)->Release();
                *place = nullptr;
              },
          .place = place};
}

/// A VARIANT for output, and one that the caller has initialised.
Argument Out(VARIANT* place);
Argument InOut(VARIANT* place);

/// Stores a text as a result.
/// @throws std::bad_alloc.
void Give(BSTR* place, std::wstring_view text);

inline void Give(VARIANT_BOOL* place, bool value) { *place = value ? VARIANT_TRUE : VARIANT_FALSE; }

/// The characters of a BSTR; empty for null.
std::wstring Text(BSTR value);

}  // namespace cad_host
