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

 private:
  void* m_previous;
};
