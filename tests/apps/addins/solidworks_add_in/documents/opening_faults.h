/// @file Unusual answers of the host to the call that opens a file.
#pragma once

#include "cad_host/faults.h"

/// The next OpenDoc6 opens the file and reports errors and warnings all the same.
inline void ReportErrorsAndWarnings(cad_host::Faults& faults) {
  constexpr long kAllBits = -1;
  faults.ChangeResults(L"ISldWorks::OpenDoc6", 1, [](const auto& results) {
    *static_cast<long*>(results[0]) = kAllBits;
    *static_cast<long*>(results[1]) = kAllBits;
  });
}

/// The next OpenDoc6 opens the file and returns its document, but also `result`, a failure.
inline void FailWithADocument(cad_host::Faults& faults, HRESULT result) {
  faults.FailWithResults(L"ISldWorks::OpenDoc6", 1, result);
}
