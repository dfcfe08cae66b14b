/// @file What the host stores about the command interface for the next session.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cad_host/commands.h"

namespace cad_host {

struct CommandMemory {
  long last_command_id = 40000;  // the host's own commands have lower ids
  std::vector<SavedGroup> groups;
  std::vector<std::shared_ptr<CommandTab>> tabs;
};

/// The file in a state folder.
class CommandStore {
 public:
  /// @param folder empty: nothing is stored.
  explicit CommandStore(const std::wstring& folder);

  /// What was stored; empty if there is no file yet.
  CommandMemory Read() const;

  /// @throws HostError naming the file if it cannot be written.
  void Write(const CommandMemory& memory) const;

 private:
  std::wstring m_path;
};

}  // namespace cad_host
