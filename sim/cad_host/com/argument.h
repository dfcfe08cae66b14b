/// @file The arguments of an interface call, as the journal writes them and as a fault takes them back.
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
  bool is_given = true;                ///< false: a null pointer where a result belongs
  std::function<std::wstring()> text;  ///< its value now
  std::function<void()> clear;         ///< before the call: makes a result null, false or 0
  std::function<void()> take_back;     ///< after the call: frees a result and clears it
  void* place = nullptr;               ///< where a result is stored
};

/// `"text"`; `null` for a null BSTR.
std::wstring TextOf(BSTR value);
std::wstring TextOf(long value);
std::wstring TextOf(VARIANT_BOOL value);
std::wstring TextOf(double value);
std::wstring TextOf(const VARIANT& value);
std::wstring TextOf(DWORD value);
std::wstring TextOf(REFIID value);
/// What an object of the host calls itself; "an object of the add-in" for another one.
std::wstring TextOf(IUnknown* object);

/// An argument that goes in.
template <class T>
Argument In(T value) {
  return {.text = [value] { return TextOf(value); }, .clear = nullptr, .take_back = nullptr};
}

/// An array that goes in.
Argument In(const long* values, long count);

/// A result: its place was not initialised by the caller.
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

/// A result in an array of the caller's.
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

/// A VARIANT that is only a result, and one that the caller initialised.
Argument Out(VARIANT* place);
Argument InOut(VARIANT* place);

/// Stores a text as a result.
/// @throws std::bad_alloc.
void Give(BSTR* place, std::wstring_view text);

inline void Give(VARIANT_BOOL* place, bool value) { *place = value ? VARIANT_TRUE : VARIANT_FALSE; }

/// The characters of a BSTR; empty for null.
std::wstring Text(BSTR value);

}  // namespace cad_host
