/// @file What the module, such as the add-in's DLL, hands to the invoker.
#pragma once

#include <string>

#include "CZALCmdInvoker.h"

namespace invoker {

/// Shows a message box that says that the client could not be reached: the module's text, `reason`, and the
/// log folder. Returns when the box is closed. Shows nothing if there is not enough memory.
void ShowClientNotReached(const std::wstring& reason) noexcept;

/// Keeps the module loaded during its lifetime, if the module has set the functions for that.
class ModuleLock {
 public:
  ModuleLock() noexcept;
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
  ~ModuleLock();

 private:
  CZALCmdInvoker::LockFunction m_unlock;
};

}  // namespace invoker
