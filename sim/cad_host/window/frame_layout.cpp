#include "frame_layout.h"

#include <algorithm>

namespace cad_host {
namespace {

constexpr int kGap = 5;
constexpr int kSmallest = 90;

int Unscaled(int pixels, window::Dpi dpi) { return MulDiv(pixels, window::Dpi::kNormal, dpi.Value()); }

}  // namespace

FrameLayout::Places FrameLayout::Arrange(const Measures& measures) const {
  const window::Dpi dpi = measures.dpi;
  const LONG gap = dpi.Scale(kGap);
  const LONG width = measures.window.cx;
  const LONG bottom = measures.window.cy - measures.status_bar;
  Places places;
  places.command_bar = {0, 0, width, measures.command_bar};
  const LONG tabs = places.command_bar.bottom;
  places.document_tabs = {0, tabs, width, tabs + measures.document_tabs};
  const LONG top = places.document_tabs.bottom + gap / 2;
  const LONG journal = std::max<LONG>(bottom - dpi.Scale(m_journal), top + dpi.Scale(kSmallest));
  const LONG tree = dpi.Scale(m_tree);
  const LONG properties = std::max<LONG>(width - dpi.Scale(m_properties), tree + dpi.Scale(kSmallest));
  const LONG middle = journal - gap;
  places.tree = {0, top, tree, middle - measures.pick_point};
  places.pick_point = {0, places.tree.bottom, tree, middle};
  places.view = {tree + gap, top, properties - gap, middle};
  places.properties = {properties, top, width, middle};
  places.journal = {0, journal, width, bottom};
  return places;
}

std::optional<FrameLayout::Edge> FrameLayout::EdgeAt(const Places& places, POINT place) {
  const bool beside_view = place.y >= places.view.top && place.y < places.view.bottom;
  if (place.y >= places.view.bottom && place.y < places.journal.top) return Edge::kJournal;
  if (beside_view && place.x >= places.tree.right && place.x < places.view.left) return Edge::kTree;
  if (beside_view && place.x >= places.view.right && place.x < places.properties.left)
    return Edge::kProperties;
  return std::nullopt;
}

void FrameLayout::Drag(const Measures& measures, Edge edge, POINT place) {
  const auto limited = [&](LONG pixels, LONG most) {
    return std::clamp(Unscaled(static_cast<int>(pixels), measures.dpi), kSmallest,
                      std::max(Unscaled(static_cast<int>(most), measures.dpi) - 2 * kSmallest, kSmallest));
  };
  const SIZE window = measures.window;
  if (edge == Edge::kTree) m_tree = limited(place.x, window.cx - measures.dpi.Scale(m_properties));
  if (edge == Edge::kProperties)
    m_properties = limited(window.cx - place.x, window.cx - measures.dpi.Scale(m_tree));
  if (edge == Edge::kJournal)
    m_journal = limited(window.cy - measures.status_bar - place.y, window.cy - measures.command_bar);
}

}  // namespace cad_host
