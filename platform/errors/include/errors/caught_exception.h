/// @file What an exception is at a place where none may pass.
#pragma once

#include <windows.h>

#include <string>

/// An exception as COM tells it: a failing HRESULT and a text for a person.
struct CaughtException {
  HRESULT code;
  std::wstring text;

  /// Describes the exception being handled; call it in a catch block only. A COM error and a platform
  /// exception keep code and text, lack of memory is E_OUTOFMEMORY, another standard exception E_FAIL with
  /// its text, anything else E_FAIL.
  static CaughtException Describe();
};
