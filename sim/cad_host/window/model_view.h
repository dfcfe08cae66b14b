/// @file A picture of the active document.
#pragma once

#include "pane.h"

namespace cad_host {

/// Shows components as boxes at their positions, a part as one box, a drawing as a sheet with its views. A
/// click selects a face of the model at the point under the mouse, a double click a component.
class ModelView : public Pane {
 public:
  ModelView(const Desk& desk, HWND parent, int id);

  void Refresh() override;

  /// The point in the plane of the picture, in metres, which is shown at `place`.
  Point PointAt(POINT place) const;

  /// The pixel at which the point is shown.
  POINT PlaceOf(const Point& point) const;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Layout(SIZE size) override;

 private:
  /// How the picture is fitted into the pane.
  struct Fit {
    double left = 0;    ///< in metres, at the left edge
    double bottom = 0;  ///< in metres, at the bottom edge
    double scale = 1;   ///< pixels for a metre
  };

  void FitDocument();
  void Paint(HDC dc) const;
  void DrawModel(HDC dc) const;
  void DrawComponents(HDC dc, const Document& document) const;
  void DrawSheet(HDC dc, const Document& document) const;
  void DrawSelection(HDC dc, const Document& document) const;
  void DrawBox(HDC dc, const Point& middle, COLORREF fill, const std::wstring& name) const;
  RECT BoxAt(const Point& middle) const;
  std::shared_ptr<Component> ComponentAt(POINT place) const;
  void SelectFace(POINT place) const;
  void SelectComponent(POINT place) const;

  Fit m_fit;
  SIZE m_size{};
  std::shared_ptr<const Document> m_document;
};

}  // namespace cad_host
