/// @file What is done to the components of an open assembly.
#pragma once

#include <memory>
#include <string>

#include "cad_host/document.h"
#include "documents.h"

namespace cad_host {

/// Puts an instance of the model file `path` into the assembly.
/// @throws HostError naming the file where it cannot be loaded.
std::shared_ptr<Component> AddComponent(Documents& documents, Document& assembly, const std::wstring& path,
                                        const Point& position);

struct Replacement {
  std::wstring path;
  bool all_instances = true;
  bool reattach_mates = true;
};

/// Puts another file in the place of the selected components, or of all instances of their models.
/// @return why nothing was replaced; empty where it was. A file with the name of the one that it would
///         replace is refused, whatever its folder.
std::wstring ReplaceSelected(Documents& documents, Document& assembly, const Replacement& replacement);

}  // namespace cad_host
