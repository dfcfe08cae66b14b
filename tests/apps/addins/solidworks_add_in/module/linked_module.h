/// @file The module that is linked into the test, for what cannot be tested from outside the DLL.
#pragma once

#include "add_in_dll.h"
#include "module/application.h"
#include "module/com_module.h"

/// While it lives, the test's own copy of the module loads its resources and type library from the DLL.
class LinkedModule {
 public:
  LinkedModule() {
    CSolidWorksAddInModule::Instance().Attach(m_dll.Handle(), {});
    CSolidWorksAddInApp::Instance().InitInstance();
  }
  LinkedModule(const LinkedModule&) = delete;
  LinkedModule& operator=(const LinkedModule&) = delete;
  ~LinkedModule() {
    CSolidWorksAddInApp::Instance().ExitInstance();
    CSolidWorksAddInModule::Instance().Attach(nullptr, {});
  }

  HINSTANCE Handle() const { return m_dll.Handle(); }

 private:
  AddInDll m_dll;
};
