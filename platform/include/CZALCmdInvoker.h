/// @file Commands to the PLM client.
#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

/// How a command is sent.
struct CZALCommandOptions {
  /// Whether the client's program is started if nothing serves the pipe.
  bool starts_client = true;
  /// Whether a message box says that the client could not be reached.
  bool shows_box = true;
  /// The longest time for connecting, sending and waiting together; none if the command may take any time.
  std::optional<std::chrono::milliseconds> timeout{};
};

/// Sends commands to the PLM client over its local named pipe, one at a time.
///
/// The first command opens the connection; later commands use it as well. The destructor closes it.
class CZALCmdInvoker {
 public:
  /// Whether a command waits for its answer.
  using BusyFlag = std::shared_ptr<std::atomic<bool>>;

  /// @param name the name of the configuration that contains PlmClient.json.
  /// @param file another name for that file; empty for "PlmClient.json".
  /// @param busy the flag of several invokers that together send one command at a time; null for a flag of
  ///        its own.
  CZALCmdInvoker(std::wstring name, std::wstring file, BusyFlag busy = nullptr);
  CZALCmdInvoker(const CZALCmdInvoker&) = delete;
  CZALCmdInvoker& operator=(const CZALCmdInvoker&) = delete;
  ~CZALCmdInvoker();

  /// Sends `command` with its JSON text and waits for the client's answer; meanwhile the thread serves
  /// COM calls and its windows repaint. Mouse and key messages that arrive meanwhile are dropped; Esc ends
  /// the wait.
  /// @return the answer, unchanged. The empty string if the client's answer is empty. Also if the client
  ///         could not be reached or broke the protocol, the user pressed Esc, the timeout has passed or
  ///         another command waits; then one line is logged under "platform". If the client could not be
  ///         reached, a message box shows the reason.
  std::wstring Invoke(const std::wstring& command, std::wstring json, const CZALCommandOptions& options = {});

  /// The texts of the message box about a client that could not be reached. An empty one is in English; an
  /// empty caption is "TAVO".
  struct BoxTexts {
    std::wstring first_line;
    std::wstring log_folder;  ///< what stands before the folder: "Log folder:"
    std::wstring caption;
  };

  /// Returns the texts, in the language of the thread.
  using BoxTextSource = BoxTexts (*)();

  /// Sets the function that returns the texts of this module's boxes; null for the English ones.
  static void SetBoxTexts(BoxTextSource source) noexcept;

  using LockFunction = void (*)() noexcept;

  /// Sets the functions that keep this module loaded and end that. The host may keep an object of a wait
  /// longer than the invoker; each such object holds one lock. Null for both if the module stays loaded.
  static void SetModuleLock(LockFunction lock, LockFunction unlock) noexcept;

 private:
  class Impl;
  std::unique_ptr<Impl> m_impl;
};
