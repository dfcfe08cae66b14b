/// @file The class of the add-in, for methods that no command calls.
#pragma once

#include "module/com_object.h"
#include "solidworks_add_in.h"

/// An add-in object of the code that is linked into the test, and a COM pointer that keeps it alive. Both are
/// without the guards through which a real host calls: exceptions leave the methods.
struct ClassUnderTest {
  ISwAddinPtr held;
  CSolidWorksAddIn* object;
};

inline ClassUnderTest MakeClassUnderTest() {
  auto* const object = new ComObject<CSolidWorksAddIn>();
  return {ISwAddinPtr(static_cast<ISwAddin*>(object), false), object};
}
