/// @file What every object of one session shares, as long as any of them lives.
#pragma once

#include <memory>
#include <vector>

#include "cad_host/faults.h"
#include "cad_host/journal.h"

namespace cad_host {

class HostObject;
struct HostState;

struct Services {
  Journal journal;
  Faults faults;
  std::weak_ptr<HostState> host;     ///< gone when the session has ended
  std::vector<HostObject*> objects;  ///< all that live; each takes itself out at its end
};

}  // namespace cad_host
