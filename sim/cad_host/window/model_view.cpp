#include <windows.h>

#include "model_view.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "console/script.h"
#include "pixels.h"
#include "resource_ids.h"
#include "window/gdi.h"

namespace cad_host {
namespace {

constexpr COLORREF kTop = RGB(246, 249, 253);
constexpr COLORREF kBottom = RGB(205, 217, 232);
constexpr COLORREF kSteel = RGB(150, 180, 215);
constexpr COLORREF kFaded = RGB(228, 230, 233);
constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kEdge = RGB(60, 75, 100);
constexpr COLORREF kGrey = RGB(150, 155, 165);
constexpr COLORREF kChosen = RGB(20, 130, 70);

constexpr double kSmallestSide = 0.4;  // metres that fit at least
constexpr double kMargin = 1.35;       // room around the model
constexpr double kBoxSide = 0.08;      // metres
constexpr int kLargestBox = 70;        // pixels at 96 dots per inch
constexpr int kSmallestBox = 4;

/// The positions of what a document shows.
std::vector<Point> PointsOf(const Document& document) {
  std::vector<Point> points{{}};
  for (const auto& component : document.components) points.push_back(component->record.position);
  for (const ViewRecord& view : document.model.views) points.push_back(view.position);
  for (const Selection& selection : document.selection) points.push_back(selection.point);
  return points;
}

void Fill(HDC dc, const RECT& area, COLORREF colour) {
  SetBkColor(dc, colour);
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

void Gradient(HDC dc, SIZE size) {
  constexpr int kBands = 32;
  const auto mix = [](int from, int to, int band) { return from + (to - from) * band / (kBands - 1); };
  for (int band = 0; band < kBands; ++band) {
    const RECT area{0, size.cy * band / kBands, size.cx, size.cy * (band + 1) / kBands};
    Fill(dc, area,
         RGB(mix(GetRValue(kTop), GetRValue(kBottom), band), mix(GetGValue(kTop), GetGValue(kBottom), band),
             mix(GetBValue(kTop), GetBValue(kBottom), band)));
  }
}

void Centred(HDC dc, RECT area, const std::wstring& text, COLORREF colour, UINT format = DT_VCENTER) {
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, colour);
  DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &area,
            DT_CENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP | format);
}

}  // namespace

ModelView::ModelView(const Desk& desk, HWND parent, int id) : Pane(desk) {
  CreatePane(parent, L"CadHostModelView", id);
}

void ModelView::Refresh() {
  const auto document = m_desk.host.ActiveDocument();
  m_document = document;
  FitDocument();
  InvalidateRect(Handle(), nullptr, FALSE);
}

void ModelView::Layout(SIZE size) {
  m_size = size;
  FitDocument();
}

void ModelView::FitDocument() {
  if (!m_document || m_size.cx <= 0 || m_size.cy <= 0) return;
  constexpr double kFar = std::numeric_limits<double>::max();
  double left = kFar, right = -kFar, bottom = kFar, top = -kFar;
  for (const Point& point : PointsOf(*m_document)) {
    left = std::min(left, point.x);
    right = std::max(right, point.x);
    bottom = std::min(bottom, point.y);
    top = std::max(top, point.y);
  }
  const double width = std::max(right - left, kSmallestSide) * kMargin;
  const double height = std::max(top - bottom, kSmallestSide) * kMargin;
  m_fit.scale = std::min(m_size.cx / width, m_size.cy / height);
  m_fit.left = (left + right - m_size.cx / m_fit.scale) / 2;
  m_fit.bottom = (bottom + top - m_size.cy / m_fit.scale) / 2;
}

Point ModelView::PointAt(POINT place) const {
  // A tenth of a millimetre is finer than a person points.
  const auto round = [](double metres) { return std::round(metres * 1e4) / 1e4; };
  return {round(m_fit.left + place.x / m_fit.scale),
          round(m_fit.bottom + (m_size.cy - place.y) / m_fit.scale), 0};
}

POINT ModelView::PlaceOf(const Point& point) const {
  return {static_cast<LONG>(std::lround((point.x - m_fit.left) * m_fit.scale)),
          static_cast<LONG>(std::lround(m_size.cy - (point.y - m_fit.bottom) * m_fit.scale))};
}

LRESULT ModelView::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT: {
      const window::Painting painting(Handle());
      Paint(painting.Dc());
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
      SelectFace({GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)});
      return 0;
    case WM_LBUTTONDBLCLK:
      SelectComponent({GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)});
      return 0;
    default:
      return Pane::OnMessage(message, wparam, lparam);
  }
}

// Drawn in memory first, so that nothing flickers.
void ModelView::Paint(HDC dc) const {
  if (m_size.cx <= 0 || m_size.cy <= 0) return;
  const window::UniqueDc memory(CreateCompatibleDC(dc));
  const window::UniqueBitmap bitmap = MakeCanvas(m_size);
  const window::Selected selected(memory.get(), bitmap.get());
  Gradient(memory.get(), m_size);
  const window::Selected with_font(memory.get(), m_desk.font.get());
  DrawModel(memory.get());
  BitBlt(dc, 0, 0, m_size.cx, m_size.cy, memory.get(), 0, 0, SRCCOPY);
}

void ModelView::DrawModel(HDC dc) const {
  if (!m_document || !m_desk.host.ActiveDocument()) {
    return Centred(dc, {0, 0, m_size.cx, m_size.cy}, Text(IDS_NO_DOCUMENT), kGrey);
  }
  if (m_document->Type() == swDocDRAWING) {
    DrawSheet(dc, *m_document);
  } else if (m_document->Type() == swDocASSEMBLY) {
    DrawComponents(dc, *m_document);
  } else {
    DrawBox(dc, {}, kSteel, m_document->title);
  }
  DrawSelection(dc, *m_document);
}

void ModelView::DrawComponents(HDC dc, const Document& document) const {
  for (const auto& component : document.components) {
    DrawBox(dc, component->record.position, component->IsSuppressed() ? kFaded : kSteel,
            component->record.name);
  }
}

void ModelView::DrawSheet(HDC dc, const Document& document) const {
  const int margin = m_desk.Scale(24);
  const window::UniqueBrush paper(CreateSolidBrush(kPaper));
  const window::UniquePen edge(CreatePen(PS_SOLID, 1, kEdge));
  const window::Selected with_brush(dc, paper.get());
  const window::Selected with_pen(dc, edge.get());
  const RECT sheet{margin, margin, m_size.cx - margin, m_size.cy - margin};
  Rectangle(dc, sheet.left, sheet.top, sheet.right, sheet.bottom);
  const RECT title{sheet.right - m_desk.Scale(180), sheet.bottom - m_desk.Scale(40), sheet.right,
                   sheet.bottom};
  Rectangle(dc, title.left, title.top, title.right, title.bottom);
  Centred(dc, title, document.title + L" - " + Text(IDS_SHEET), kEdge);
  for (const ViewRecord& view : document.model.views) DrawBox(dc, view.position, kPaper, view.name);
}

RECT ModelView::BoxAt(const Point& middle) const {
  const int side = std::clamp(static_cast<int>(std::min(kBoxSide * m_fit.scale, 1e4)),
                              m_desk.Scale(kSmallestBox), m_desk.Scale(kLargestBox));
  const POINT place = PlaceOf(middle);
  return {place.x - side / 2, place.y - side / 2, place.x + side / 2, place.y + side / 2};
}

// A box that is seen a little from above and from the right, with its name below; a small one is a spot.
void ModelView::DrawBox(HDC dc, const Point& middle, COLORREF fill, const std::wstring& name) const {
  const RECT box = BoxAt(middle);
  if (box.right < 0 || box.bottom < 0 || box.left > m_size.cx || box.top > m_size.cy) return;
  if (box.right - box.left < m_desk.Scale(kLargestBox / 3)) return Fill(dc, box, fill);
  const LONG depth = (box.right - box.left) / 4;
  SetDCBrushColor(dc, fill);
  SetDCPenColor(dc, kEdge);
  const window::Selected with_brush(dc, GetStockObject(DC_BRUSH));
  const window::Selected with_pen(dc, GetStockObject(DC_PEN));
  Rectangle(dc, box.left, box.top, box.right, box.bottom);
  const POINT top[] = {{box.left, box.top},
                       {box.left + depth, box.top - depth},
                       {box.right - 1 + depth, box.top - depth},
                       {box.right - 1, box.top}};
  Polygon(dc, top, static_cast<int>(std::size(top)));
  const POINT side[] = {{box.right - 1, box.top},
                        {box.right - 1 + depth, box.top - depth},
                        {box.right - 1 + depth, box.bottom - 1 - depth},
                        {box.right - 1, box.bottom - 1}};
  Polygon(dc, side, static_cast<int>(std::size(side)));
  Centred(dc, {box.left, box.bottom + 2, box.right, box.bottom + m_desk.Scale(18)}, name, kEdge, DT_TOP);
}

void ModelView::DrawSelection(HDC dc, const Document& document) const {
  const window::UniquePen pen(CreatePen(PS_SOLID, m_desk.Scale(2), kChosen));
  const window::Selected with_pen(dc, pen.get());
  const window::Selected with_brush(dc, GetStockObject(NULL_BRUSH));
  const int arm = m_desk.Scale(8);
  for (const Selection& selection : document.selection) {
    if (selection.component) {
      const RECT box = BoxAt(selection.component->record.position);
      Rectangle(dc, box.left - 1, box.top - 1, box.right + 2, box.bottom + 2);
    }
    const POINT place = PlaceOf(selection.point);
    MoveToEx(dc, place.x - arm, place.y, nullptr);
    LineTo(dc, place.x + arm, place.y);
    MoveToEx(dc, place.x, place.y - arm, nullptr);
    LineTo(dc, place.x, place.y + arm);
  }
}

// The last one that was drawn there is on top.
std::shared_ptr<Component> ModelView::ComponentAt(POINT place) const {
  const auto document = m_desk.host.ActiveDocument();
  if (!document) return nullptr;
  const auto found =
      std::find_if(document->components.rbegin(), document->components.rend(), [&](const auto& component) {
        const RECT box = BoxAt(component->record.position);
        return PtInRect(&box, place);
      });
  return found == document->components.rend() ? nullptr : *found;
}

void ModelView::SelectFace(POINT place) const {
  SetFocus(Handle());
  if (!m_desk.host.ActiveDocument()) return;
  const Point point = PointAt(place);
  m_desk.actions.Do(
      {L"select", L"face", L"at", ScriptNumber(point.x), ScriptNumber(point.y), ScriptNumber(point.z)});
}

void ModelView::SelectComponent(POINT place) const {
  const auto component = ComponentAt(place);
  if (!component) return;
  const Point point = PointAt(place);
  m_desk.actions.Do({L"select", L"component", component->record.name, L"at", ScriptNumber(point.x),
                     ScriptNumber(point.y), ScriptNumber(point.z)});
}

}  // namespace cad_host
