/// @file Inserting models into drawings.
#pragma once

#include <string>

#include "host/application.h"

/// Inserts models into drawings. The add-in object creates one for each connection; no command uses it.
class CDrawingHelper {
 public:
  /// Opens the model at `path` silently and places a front view of it in the active drawing, at the point
  /// that the user picked. A failure is logged; opened documents are not closed.
  /// @throws _com_error E_POINTER if no document is open or the host returns no selection manager.
  void InsertChildFile(const ISldWorksPtr& application, const std::wstring& path) const;
};
