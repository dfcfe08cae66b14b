/// @file A document that is open in the host.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cad_host/model_file.h"

namespace cad_host {

class FileHold;

/// One instance in an open assembly. While it is not suppressed it keeps its file open, unless the host has
/// Quirk::kHeldFiles off: the file can be read, but not written, moved or deleted.
struct Component {
  ComponentRecord record;
  long loaded_revision = 0;        ///< of the file when it was last loaded
  std::shared_ptr<FileHold> hold;  ///< null while the file is not kept open

  bool IsSuppressed() const { return record.suppression == swComponentSuppressed; }
};

/// Something that the person selected, and the point.
struct Selection {
  std::shared_ptr<Component> component;  ///< null: a face of the model
  Point point;
};

/// An open document keeps its file open as a component does: other programs can read the file, but not
/// change it.
struct Document {
  std::wstring path;  ///< empty until it is saved for the first time
  std::wstring title;
  bool read_only = false;
  bool view_only = false;
  bool changed = false;
  std::wstring configuration;
  ModelFile model;  ///< while it is open, its components are in `components`
  std::vector<std::shared_ptr<Component>> components;
  std::vector<Selection> selection;
  std::shared_ptr<FileHold> hold;

  long Type() const { return model.type; }

  /// `part "bolt.sldprt"`.
  std::wstring Describe() const;

  /// The component instance `name`, without regard to case; null if there is none.
  std::shared_ptr<Component> FindComponent(const std::wstring& name) const;
};

}  // namespace cad_host
