/// @file Records what happens in the window as a session script.
#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "cad_host/host.h"

namespace cad_host {

/// Writes each line when it is known, so that the file is whole whatever happens to the program.
class Recorder {
 public:
  /// Begins a script with the lines that bring a new session to where this one is: add-ins, documents that
  /// have a file. An existing file is replaced.
  /// @throws HostError naming the file if it cannot be written.
  void Start(const std::wstring& path, const Host& host);

  void Stop();

  bool IsRecording() const { return m_file.is_open(); }

  /// Remembers the button that the person pressed in a message box of the line that runs now.
  void Answer(const std::wstring& button) { m_answers.push_back(button); }

  /// Writes a line that has been run. Before it come the answers that its message boxes get.
  /// @throws HostError naming the file if it cannot be written.
  void Write(const std::wstring& line);

  /// Forgets the answers of a line that failed.
  void Forget() { m_answers.clear(); }

 private:
  void WriteLine(const std::wstring& line);

  std::wstring m_path;
  std::ofstream m_file;
  std::vector<std::wstring> m_answers;
};

}  // namespace cad_host
