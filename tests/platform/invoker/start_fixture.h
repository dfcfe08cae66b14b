/// @file The fixture of the tests in which the invoker starts the client's program.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "invoker_fixture.h"

inline constexpr ULONGLONG kAtOnce =
    1'500;  // milliseconds, long enough for a busy machine that starts a program

/// A client program in its own folder, for the invoker to start.
class ClientStart : public InvokerFixture {
 protected:
  ~ClientStart() override;

  /// Copies the program into the folder and configures it.
  /// @param verb what the program does, see started_client/main.cpp.
  void Install(const std::string& verb, std::string_view further_members = {});

  void ConfigureProgram(const std::wstring& path, std::string_view further_members = {});

  std::wstring Program() const { return m_folder.Path(kFolder + L"\\PLM client.exe"); }

  /// The lines that each process of the program wrote at its start: process id, command line and folder.
  std::vector<std::wstring> Found() const;

  /// Ends every process of the program.
  void KillClients() const;

  const std::wstring kFolder = L"the \u6D4B client";
};
