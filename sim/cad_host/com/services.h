/// @file What all objects of one session share; it exists as long as any of them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "cad_host/faults.h"
#include "cad_host/journal.h"
#include "cad_host/quirks.h"

namespace cad_host {

class HostObject;
struct HostState;

struct Services {
  Journal journal;
  Faults faults;
  Quirks quirks;
  std::weak_ptr<HostState> host;     ///< expired when the session has ended
  std::vector<HostObject*> objects;  ///< all existing ones; each removes itself when destroyed

  /// Called with the description of an object whose last reference is released; may be empty.
  std::function<void(const std::wstring& object)> on_last_release;
};

}  // namespace cad_host
