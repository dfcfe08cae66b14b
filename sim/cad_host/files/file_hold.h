/// @file Files that the host keeps open.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <string>

#include "base/unique_handle.h"

namespace cad_host {

/// Keeps a file open so that others can read it but not write, move or delete it.
class FileHold {
 public:
  /// @throws HostError naming the file if it cannot be opened in this way.
  explicit FileHold(std::wstring path);

  /// Closes the file for a while so that the host itself can write it.
  class Pause {
   public:
    explicit Pause(FileHold* hold) : m_hold(hold) {
      if (m_hold) m_hold->m_file.reset();
    }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
    ~Pause() {
      if (m_hold) m_hold->Take();
    }

   private:
    FileHold* m_hold;
  };

 private:
  bool Take();

  std::wstring m_path;
  UniqueHandle m_file;
};

/// One hold for each file, however many documents and components share it.
class FileHolds {
 public:
  /// @throws HostError; see FileHold.
  std::shared_ptr<FileHold> Hold(const std::wstring& path);

  /// The existing hold of the file; null if it is not held.
  std::shared_ptr<FileHold> Find(const std::wstring& path) const;

 private:
  std::map<std::wstring, std::weak_ptr<FileHold>> m_holds;  // by lower-case path
};

}  // namespace cad_host
