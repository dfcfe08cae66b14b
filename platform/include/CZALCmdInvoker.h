/// @file Commands to the PLM client.
#pragma once

#include <memory>
#include <string>

/// Sends commands to the PLM client over its local named pipe, one at a time.
///
/// The first command opens the connection, which is then kept; a destroyed invoker closes it.
class CZALCmdInvoker {
 public:
  /// @param name the configuration's name, under which PlmClient.json lies.
  /// @param file another name for that file; empty for "PlmClient.json".
  CZALCmdInvoker(std::wstring name, std::wstring file);
  CZALCmdInvoker(const CZALCmdInvoker&) = delete;
  CZALCmdInvoker& operator=(const CZALCmdInvoker&) = delete;
  ~CZALCmdInvoker();

  /// Sends `command` with its JSON text and waits for the client's answer; meanwhile the thread serves
  /// COM calls and its windows repaint.
  /// @return the answer as it stands. An empty string: the client gave none, or could not be reached, or
  ///         broke the protocol; all but the first are told in one line of the log under "platform".
  std::wstring Invoke(const std::wstring& command, std::wstring json);

 private:
  class Impl;
  std::unique_ptr<Impl> m_impl;
};
