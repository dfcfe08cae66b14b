/// @file The simulated PLM client as a process of its own.
#pragma once

#include <windows.h>

#include <string>

#include "base/unique_handle.h"

/// Runs plm_client.exe of build/windows/bin. The destructor ends it.
class ClientProcess {
 public:
  /// Starts it.
  /// @param pipe the pipe's name without its beginning.
  /// @param answers the folder with an answer for each command.
  /// @param record the file to which the client adds a line for each request.
  ClientProcess(const std::wstring& pipe, const std::wstring& answers, std::wstring record);
  ClientProcess(const ClientProcess&) = delete;
  ClientProcess& operator=(const ClientProcess&) = delete;
  ~ClientProcess() { Kill(); }

  /// Starts it and waits until it serves the pipe. @throws std::runtime_error if it does not.
  void Start();

  /// Ends it at once, without a farewell, unless that has been done already.
  void Kill();

  /// Of the process.
  DWORD Id() const { return m_id; }

  /// Grows with each request that the client has read.
  long long RecordSize() const;

 private:
  std::wstring m_pipePath;
  std::wstring m_program;
  std::wstring m_arguments;
  std::wstring m_record;
  UniqueHandle m_process;
  DWORD m_id = 0;
};
