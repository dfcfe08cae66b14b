/// @file The calls of the host, and the files, of a connection with fourteen items, and nothing else.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <array>
#include <string>

#include "host/application.h"
#include "host/command_manager.h"
#include "temp_folder.h"

class SameCalls {
 public:
  /// @param view the menu's file, which is read; what else is written goes into `folder`.
  void Make(IDispatch* host, long cookie, const std::wstring& view, const TempFolder& folder);

  /// Takes everything back.
  void Undo();

 private:
  void AddTab(long type);

  std::array<std::wstring, 3> m_files;
  ISldWorksPtr m_host;
  ICommandManagerPtr m_manager;
  ICommandGroupPtr m_group;
  bool m_replaces = false;  // what an earlier start has saved
  DWORD m_advice = 0;
};
