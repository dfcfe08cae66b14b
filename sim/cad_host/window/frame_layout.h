/// @file Where the panes of the main window lie.
#pragma once

#include <windows.h>

#include <optional>

#include "window/dpi.h"

namespace cad_host {

/// From the top: command bar, document tabs; then the tree, the picture and the properties side by side; then
/// the journal and the status bar. The person can drag the edges between panes.
class FrameLayout {
 public:
  enum class Edge { kTree, kProperties, kJournal };

  /// What the layout depends on, in pixels.
  struct Measures {
    SIZE window{};
    int command_bar = 0;  ///< heights
    int document_tabs = 0;
    int pick_point = 0;
    int status_bar = 0;
    window::Dpi dpi;
  };

  struct Places {
    RECT command_bar{}, document_tabs{}, tree{}, pick_point{}, view{}, properties{}, journal{};
  };

  Places Arrange(const Measures& measures) const;

  /// The edge at `place`; empty if there is none.
  static std::optional<Edge> EdgeAt(const Places& places, POINT place);

  /// Moves the edge to `place`, as far as the panes beside it keep some room.
  void Drag(const Measures& measures, Edge edge, POINT place);

 private:
  // For 96 dots per inch.
  int m_tree = 275;
  int m_properties = 320;
  int m_journal = 240;
};

}  // namespace cad_host
