/// @file Commands to the PLM client.
#pragma once

#include <memory>
#include <string>

/// Sends commands to the PLM client over its local named pipe, one at a time.
///
/// The first command opens the connection; later commands use it as well. The destructor closes it.
class CZALCmdInvoker {
 public:
  /// @param name the name of the configuration that contains PlmClient.json.
  /// @param file another name for that file; empty for "PlmClient.json".
  CZALCmdInvoker(std::wstring name, std::wstring file);
  CZALCmdInvoker(const CZALCmdInvoker&) = delete;
  CZALCmdInvoker& operator=(const CZALCmdInvoker&) = delete;
  ~CZALCmdInvoker();

  /// Sends `command` with its JSON text and waits for the client's answer; meanwhile the thread serves
  /// COM calls and its windows repaint.
  /// @return the answer, unchanged. The empty string if the client's answer is empty; also if the client
  /// could not
  ///         be reached or broke the protocol, and then one line is logged under "platform".
  std::wstring Invoke(const std::wstring& command, std::wstring json);

 private:
  class Impl;
  std::unique_ptr<Impl> m_impl;
};
