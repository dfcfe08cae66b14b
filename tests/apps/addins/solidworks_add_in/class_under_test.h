/// @file The class of the add-in, for methods that no command calls.
#pragma once

#include "module/com_object.h"
#include "solidworks_add_in.h"

/// An add-in object of the code that is linked into the test, and the COM pointer through which a host holds
/// it.
struct ClassUnderTest {
  ISwAddinPtr held;
  CSolidWorksAddIn* object;
};

inline ClassUnderTest MakeClassUnderTest() {
  auto* const object = new ComObject<CSolidWorksAddIn>();
  return {ISwAddinPtr(static_cast<ISwAddin*>(object), false), object};
}
