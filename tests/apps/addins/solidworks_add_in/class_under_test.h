/// @file The add-in's class itself, for what no command reaches.
#pragma once

#include "module/com_object.h"
#include "solidworks_add_in.h"

/// An add-in object that is linked into the test, beside the COM pointer by which a host holds it.
struct ClassUnderTest {
  ISwAddinPtr held;
  CSolidWorksAddIn* object;
};

inline ClassUnderTest MakeClassUnderTest() {
  auto* const object = new ComObject<CSolidWorksAddIn>();
  return {ISwAddinPtr(static_cast<ISwAddin*>(object), false), object};
}
