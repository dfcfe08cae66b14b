/// @file The class of the add-in, for methods that no command calls.
#pragma once

#include "module/com_object.h"
#include "solidworks_add_in.h"
#include "views.h"

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

/// A fixture derived from AddInFixture in which such an object is connected to the host.
template <class Fixture>
class ConnectedClass : public Fixture {
 protected:
  void SetUp() override {
    this->m_home.WriteConfiguration(L"View.json", ViewWithItems(1));
    const ClassUnderTest made = MakeClassUnderTest();
    m_class = made.object;
    this->m_addIn = &this->m_host->Connect(made.held, L"class");
  }

  void TearDown() override {
    Fixture::TearDown();
    m_class = nullptr;
  }

  CSolidWorksAddIn* m_class = nullptr;
};
