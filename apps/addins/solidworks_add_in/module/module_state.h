/// @file Entering the DLL.
#pragma once

#include <windows.h>

/// The first object of every method that the host calls: while it lives, this thread takes resources from
/// the add-in's DLL. Scopes nest; each restores what was there before.
class ModuleState {
 public:
  ModuleState() noexcept;
  ModuleState(const ModuleState&) = delete;
  ModuleState& operator=(const ModuleState&) = delete;
  ~ModuleState();

  /// Before the first state, when the DLL is loaded. @return false where the system has no room for another
  /// DLL's state.
  static bool Initialize() noexcept;

  /// After the last state, when the DLL is unloaded.
  static void Terminate() noexcept;

  /// The module that this thread takes resources from: that of the innermost state, and the program itself
  /// where there is none.
  static HINSTANCE ResourceModule() noexcept;

  /// Whether a thread is inside a method of the DLL.
  static bool AnyThreadInside() noexcept;

 private:
  void* m_previous;
};
