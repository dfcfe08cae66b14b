/// @file A client that runs as a program of its own.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "base/unique_handle.h"
#include "temp_folder.h"

/// A program with its output in files. The destructor ends it.
class ClientProgram {
 public:
  /// Starts the program `name` of build/windows/bin, or the one at this full path; its output goes to files
  /// in `folder`.
  ClientProgram(const wchar_t* name, const TempFolder& folder, const std::wstring& arguments);
  ClientProgram(const ClientProgram&) = delete;
  ClientProgram& operator=(const ClientProgram&) = delete;
  ~ClientProgram();

  /// The exit code, if the program ends within twenty seconds.
  std::optional<DWORD> ExitCode() const;

  std::string Output() const { return m_folder.Read(L"output.txt"); }
  std::string Errors() const { return m_folder.Read(L"errors.txt"); }

 private:
  UniqueHandle CreateFileFor(const wchar_t* name) const;

  const TempFolder& m_folder;
  UniqueHandle m_process;
};
