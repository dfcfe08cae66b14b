/// @file VARIANTs as C++ values.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <vector>

#include "CComBSTR.h"

class CVariantHelper {
 public:
  /// Turns an array of BSTR into `list`, in array order. VT_EMPTY and VT_NULL count as an empty array.
  /// @return S_OK; DISP_E_TYPEMISMATCH for anything else, and `list` is then empty.
  static HRESULT Var2StringList(const VARIANT& variant, std::vector<CComBSTR>& list);
};
