/// @file The thread's state inside the DLL.
#pragma once

#include <windows.h>

/// Create one first in every method that the host calls: during its lifetime this thread loads resources from
/// the add-in's DLL. Objects may be nested; each restores the previous module.
class ModuleState {
 public:
  ModuleState() noexcept;
  ModuleState(const ModuleState&) = delete;
  ModuleState& operator=(const ModuleState&) = delete;
  ~ModuleState();

  /// Call this when the DLL is loaded. @return false if the system has no free thread-local slot.
  static bool Initialize() noexcept;

  /// Call this when the DLL is unloaded.
  static void Terminate() noexcept;

  /// The module from which this thread loads resources: the add-in's DLL during the lifetime of a
  /// ModuleState, else the program itself.
  static HINSTANCE ResourceModule() noexcept;

  /// Whether a thread is inside a method of the DLL.
  static bool AnyThreadInside() noexcept;

 private:
  void* m_previous;
};
