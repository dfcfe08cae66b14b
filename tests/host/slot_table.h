/// @file The interfaces in the host's published type library; the headers are compared with them.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/interfaces_fwd.h"

/// A method with its slot in the type library and its slot in the headers.
struct SlotRow {
  const char* interface_name;
  const char* method;
  int published_slot;
  int declared_slot;
};

/// An interface of the host, with the size of its vtable in release 2023.
struct InterfaceRow {
  const char* name;
  const wchar_t* published_id;
  IID declared_id;
  int slots;
};

/// Every method that the headers declare. The signatures are checked when the table is compiled.
const std::vector<SlotRow>& SlotTable();

const std::vector<InterfaceRow>& InterfaceTable();
