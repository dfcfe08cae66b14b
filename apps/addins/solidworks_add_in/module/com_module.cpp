#include "com_module.h"

#include <comdef.h>

#include "base/module_path.h"

CSolidWorksAddInModule& CSolidWorksAddInModule::Instance() noexcept {
  static CSolidWorksAddInModule module;
  return module;
}

void CSolidWorksAddInModule::Attach(HINSTANCE handle, std::span<const CreatableClass> classes) noexcept {
  m_handle = handle;
  m_classes = classes;
}

std::wstring CSolidWorksAddInModule::Path() const {
  std::wstring path = ModulePath(m_handle);
  if (path.empty()) _com_issue_error(HRESULT_FROM_WIN32(GetLastError()));
  return path;
}
