/// @file How often the add-in's DLL calls the system on files.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <shlwapi.h>

#include "call_count.h"

/// Counts during the lifetime of the object. The DLL must be loaded; there may be one object.
class FileCalls {
 public:
  int Copies() const { return m_copies.Count(); }
  int Moves() const { return m_moves.Count(); }

  /// All but the copies.
  int Others() const {
    return Moves() + m_folders.Count() + m_opened.Count() + m_deleted.Count() + m_attributes.Count() +
           m_moreAttributes.Count() + m_exists.Count() + m_isFolder.Count();
  }

 private:
  const HMODULE m_dll = GetModuleHandleW(L"solidworks_add_in.dll");
  const CallCount<0, decltype(CopyFileW)> m_copies{"CopyFileW", m_dll};
  const CallCount<0, decltype(MoveFileExW)> m_moves{"MoveFileExW", m_dll};
  const CallCount<0, decltype(CreateDirectoryW)> m_folders{"CreateDirectoryW", m_dll};
  const CallCount<0, decltype(CreateFileW)> m_opened{"CreateFileW", m_dll};
  const CallCount<0, decltype(DeleteFileW)> m_deleted{"DeleteFileW", m_dll};
  const CallCount<0, decltype(GetFileAttributesW)> m_attributes{"GetFileAttributesW", m_dll};
  const CallCount<0, decltype(GetFileAttributesExW)> m_moreAttributes{"GetFileAttributesExW", m_dll};
  const CallCount<1, decltype(PathFileExistsW)> m_exists{"PathFileExistsW", m_dll};
  const CallCount<2, decltype(PathIsDirectoryW)> m_isFolder{"PathIsDirectoryW", m_dll};
};
