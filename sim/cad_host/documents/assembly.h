/// @file Changes to the components of an open assembly.
#pragma once

#include <memory>
#include <string>

#include "cad_host/document.h"
#include "documents.h"

namespace cad_host {

/// Adds an instance of the model file `path` to the assembly.
/// @throws HostError naming the file if it cannot be loaded.
std::shared_ptr<Component> AddComponent(Documents& documents, Document& assembly, const std::wstring& path,
                                        const Point& position);

struct Replacement {
  std::wstring path;
  bool all_instances = true;
  bool reattach_mates = true;
  bool refuses_same_name = true;  ///< a file with the file name of a replaced one, even in another folder
};

/// Replaces the selected components, or all instances of their models, by another file.
/// @return why nothing was replaced; empty on success.
std::wstring ReplaceSelected(Documents& documents, Document& assembly, const Replacement& replacement);

}  // namespace cad_host
