/// @file COM on the host's thread.
#pragma once

#include <windows.h>

#include <ole2.h>

#include "cad_host/host_error.h"

namespace cad_host {

/// Makes the thread a single-threaded apartment for the life of the object.
class ComApartment {
 public:
  /// @throws HostError if the thread is another kind of apartment already.
  ComApartment() {
    const HRESULT result = OleInitialize(nullptr);
    if (FAILED(result)) throw HostError(L"COM cannot start: " + ResultText(result), result);
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() { OleUninitialize(); }
};

}  // namespace cad_host
