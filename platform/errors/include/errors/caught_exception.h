/// @file Exceptions as error codes and texts, for functions that must not throw.
#pragma once

#include <windows.h>

#include <string>

/// An exception as COM reports it: a failing HRESULT and a readable text.
struct CaughtException {
  HRESULT code;
  std::wstring text;

  /// Describes the exception being handled; call it in a catch block only. A COM error and a platform
  /// exception keep their code and text. std::bad_alloc becomes E_OUTOFMEMORY, any other standard exception
  /// E_FAIL with its text, anything else E_FAIL.
  static CaughtException Describe();
};
