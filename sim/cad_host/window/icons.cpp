#include <windows.h>

#include "icons.h"

#include <initializer_list>
#include <vector>

#include "pixels.h"

namespace cad_host {
namespace {

constexpr COLORREF kBackground = RGB(0xC0, 0xC0, 0xC0);  // becomes transparent
constexpr COLORREF kInk = RGB(60, 70, 90);
constexpr COLORREF kSteel = RGB(120, 160, 210);
constexpr COLORREF kBrass = RGB(240, 190, 80);
constexpr COLORREF kPaper = RGB(252, 252, 252);
constexpr COLORREF kFaded = RGB(215, 215, 215);
constexpr COLORREF kGreen = RGB(70, 160, 90);

// Icons are drawn on a grid of this many units and scaled down, which makes their edges smooth.
constexpr int kGrid = 64;

/// Draws into one square of the strip; coordinates are on the grid.
class Pen {
 public:
  Pen(HDC dc, int left) : m_dc(dc), m_left(left) {}

  void Shape(COLORREF fill, std::initializer_list<POINT> points) const {
    const window::UniqueBrush brush(CreateSolidBrush(fill));
    const window::UniquePen pen(CreatePen(PS_SOLID, 3, kInk));
    const window::Selected with_brush(m_dc, brush.get());
    const window::Selected with_pen(m_dc, pen.get());
    std::vector<POINT> moved(points);
    for (POINT& point : moved) point.x += m_left;
    Polygon(m_dc, moved.data(), static_cast<int>(moved.size()));
  }

  void Box(COLORREF fill, LONG left, LONG top, LONG right, LONG bottom) const {
    Shape(fill, {{left, top}, {right, top}, {right, bottom}, {left, bottom}});
  }

  void Cube(COLORREF fill, LONG left, LONG top, LONG size) const {
    const LONG depth = size / 3;
    Shape(fill, {{left, top + depth},
                 {left + depth, top},
                 {left + size, top},
                 {left + size, top + size - depth},
                 {left + size - depth, top + size},
                 {left, top + size}});
    Shape(fill,
          {{left, top + depth}, {left + size - depth, top + depth}, {left + size, top}, {left + depth, top}});
    Box(fill, left, top + depth, left + size - depth, top + size);
  }

  void Lines(std::initializer_list<LONG> heights, LONG left, LONG right) const {
    for (const LONG y : heights) Box(kInk, left, y, right, y + 1);
  }

  void Plus(LONG x, LONG y) const {
    Shape(kGreen, {{x - 4, y - 12},
                   {x + 4, y - 12},
                   {x + 4, y - 4},
                   {x + 12, y - 4},
                   {x + 12, y + 4},
                   {x + 4, y + 4},
                   {x + 4, y + 12},
                   {x - 4, y + 12},
                   {x - 4, y + 4},
                   {x - 12, y + 4},
                   {x - 12, y - 4},
                   {x - 4, y - 4}});
  }

 private:
  HDC m_dc;
  int m_left;
};

void DrawFolder(const Pen& pen) {
  pen.Shape(kBrass, {{6, 14}, {24, 14}, {30, 21}, {58, 21}, {58, 52}, {6, 52}});
}

void DrawPaper(const Pen& pen) { pen.Shape(kPaper, {{12, 6}, {42, 6}, {54, 18}, {54, 58}, {12, 58}}); }

void DrawIcon(const Pen& pen, int icon) {
  switch (icon) {
    case kPartIcon:
      return pen.Cube(kSteel, 8, 8, 48);
    case kAssemblyIcon:
      pen.Cube(kBrass, 24, 5, 34);
      return pen.Cube(kSteel, 6, 25, 34);
    case kDrawingIcon:
      DrawPaper(pen);
      pen.Box(kSteel, 20, 24, 36, 36);
      return pen.Lines({44, 50}, 20, 46);
    case kClosedFolderIcon:
      return DrawFolder(pen);
    case kOpenFolderIcon:
      DrawFolder(pen);
      return pen.Shape(kPaper, {{14, 30}, {62, 30}, {54, 52}, {6, 52}});
    case kSuppressedIcon:
      return pen.Cube(kFaded, 8, 8, 48);
    case kViewIcon:
      pen.Box(kPaper, 6, 12, 58, 52);
      return pen.Box(kSteel, 20, 24, 44, 40);
    case kOpenIcon:
      DrawFolder(pen);
      return pen.Shape(kBrass, {{14, 32}, {62, 32}, {54, 54}, {6, 54}});
    case kSaveIcon:
      pen.Shape(kSteel, {{8, 8}, {50, 8}, {56, 14}, {56, 56}, {8, 56}});
      pen.Box(kPaper, 18, 8, 44, 26);
      return pen.Box(kPaper, 16, 36, 48, 56);
    case kInsertIcon:
      pen.Cube(kSteel, 6, 16, 42);
      return pen.Plus(48, 16);
    case kFaceIcon:
      pen.Cube(kPaper, 8, 8, 48);
      return pen.Box(kGreen, 8, 24, 40, 56);
    case kPropertyIcon:
      pen.Box(kPaper, 6, 12, 58, 52);
      pen.Lines({22, 32, 42}, 14, 26);
      return pen.Lines({22, 32, 42}, 32, 52);
    default:
      return;
  }
}

int AddAll(IconSet& set, const Pixels& strip) {
  int size = 0;
  int same = 0;
  ImageList_GetIconSize(set.normal.get(), &size, &same);
  const int first = ImageList_GetImageCount(set.normal.get());
  for (int left = 0; left < strip.width; left += strip.height) {
    const Pixels icon = CutSquare(strip, left, strip.height, size);
    ImageList_Add(set.normal.get(), ToBitmap(icon).get(), nullptr);
    ImageList_Add(set.grey.get(), ToBitmap(Greyed(icon)).get(), nullptr);
  }
  return first;
}

}  // namespace

IconSet EmptyIconSet(int size) {
  constexpr int kGrow = 16;
  return {window::UniqueImageList(ImageList_Create(size, size, ILC_COLOR32, 0, kGrow)),
          window::UniqueImageList(ImageList_Create(size, size, ILC_COLOR32, 0, kGrow))};
}

int AddIcons(IconSet& set, const IconList& icons) {
  const Pixels strip = ReadBitmap(icons.file);
  return strip.values.empty() ? -1 : AddAll(set, strip);
}

IconSet DrawHostIcons(int size) {
  const window::WindowDc screen(nullptr);
  const window::UniqueDc dc(CreateCompatibleDC(screen.Get()));
  const Pixels empty{kGrid * kHostIconCount, kGrid,
                     std::vector<std::uint32_t>(kGrid * kGrid * kHostIconCount)};
  const window::UniqueBitmap strip = ToBitmap(empty);
  const window::Selected selected(dc.get(), strip.get());
  const RECT all{0, 0, kGrid * kHostIconCount, kGrid};
  const window::UniqueBrush background(CreateSolidBrush(kBackground));
  FillRect(dc.get(), &all, background.get());
  for (int icon = 0; icon < kHostIconCount; ++icon) DrawIcon(Pen(dc.get(), icon * kGrid), icon);
  GdiFlush();
  IconSet icons = EmptyIconSet(size);
  AddAll(icons, FromBitmap(strip.get()));
  return icons;
}

}  // namespace cad_host
