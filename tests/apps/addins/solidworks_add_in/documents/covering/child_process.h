/// @file This test program, started once more to do something in a process of its own.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "base/unique_handle.h"

/// A child process; it is ended with the object where it still runs.
class ChildProcess {
 public:
  /// Starts this program with the arguments.
  /// @throws std::runtime_error where it cannot be started.
  explicit ChildProcess(const std::vector<std::wstring>& arguments);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  /// Waits for its end. @return its exit code. @throws std::runtime_error where it hangs.
  DWORD Wait() const;

 private:
  UniqueHandle m_process;
};

/// A file that another process has open, so that nobody else can open it.
class FileHeldElsewhere {
 public:
  explicit FileHeldElsewhere(const std::wstring& path);

 private:
  UniqueHandle m_held;  // an event that the other process sets
  ChildProcess m_process;
};

/// What the program does instead of its tests where its arguments say so.
/// @param arguments those after the program's name. @return whether they were for a child.
bool RunAsChild(const std::vector<std::wstring>& arguments, int& exit_code);
