/// @file Work in drawings.
#pragma once

#include <string>

#include "host/application.h"

/// Puts models into drawings. The add-in object makes one for each connection; no command uses it.
class CDrawingHelper {
 public:
  /// Opens the model at `path` silently and places a front view of it in the active drawing, at the point
  /// that the user picked. A failure is told in the log; nothing that was opened is closed.
  /// @throws _com_error E_POINTER where no document is open or the host gives no selection manager.
  void InsertChildFile(const ISldWorksPtr& application, const std::wstring& path) const;
};
