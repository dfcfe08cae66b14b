/// @file The example clients, started as a person starts them.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "client_program.h"
#include "environment.h"
#include "temp_folder.h"

/// How an example is started.
struct Example {
  const char* name;
  std::wstring program;
  std::wstring script;  ///< what an interpreter runs; empty if the example is a program itself
};

void PrintTo(const Example& example, std::ostream* stream);

Example GoExample();
Example NodejsExample();
std::vector<Example> AllExamples();

/// The full path of a file of examples/plm_clients.
std::wstring ExampleFile(const std::wstring& name);

/// A running example, on a pipe that no other test uses unless the arguments name one.
class ExampleClient {
 public:
  /// @param arguments further words of the command line, in quotes where they have blanks.
  explicit ExampleClient(const Example& example, const std::wstring& arguments = {});

  /// Starts the example with these arguments and no others.
  static std::unique_ptr<ExampleClient> StartWith(const Example& example, const std::wstring& arguments);

  /// The name of its pipe.
  const std::wstring& Pipe() const { return m_pipe; }

  /// Waits until the pipe is served, at most ten seconds. The test fails if it is not.
  void AwaitServing() const;

  const ClientProgram& Program() const { return m_program; }

 private:
  ExampleClient(const Example& example, const std::wstring& pipe, const std::wstring& arguments);

  std::wstring m_pipe;
  ScopedEnvironment m_packages;
  ScopedEnvironment m_anySystem;
  TempFolder m_output;
  ClientProgram m_program;
};
