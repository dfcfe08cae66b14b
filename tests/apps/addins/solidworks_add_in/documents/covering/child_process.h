/// @file This test program, started again to do something in another process.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "base/unique_handle.h"

/// A child process. The destructor ends it if it still runs.
class ChildProcess {
 public:
  /// Starts this program with the arguments.
  /// @throws std::runtime_error if it cannot be started.
  explicit ChildProcess(const std::vector<std::wstring>& arguments);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  /// Waits until it ends. @return its exit code. @throws std::runtime_error if it hangs.
  DWORD Wait() const;

 private:
  UniqueHandle m_process;
};

/// A file that another process has open and does not share.
class FileHeldElsewhere {
 public:
  explicit FileHeldElsewhere(const std::wstring& path);

 private:
  UniqueHandle m_held;  // an event that the other process sets
  ChildProcess m_process;
};

/// Runs the program as a child process, instead of its tests, if its arguments say so.
/// @param arguments those after the program's name. @return whether they are for a child process.
bool RunAsChild(const std::vector<std::wstring>& arguments, int& exit_code);
