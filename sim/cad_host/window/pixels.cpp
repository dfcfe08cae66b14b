#include <windows.h>

#include "pixels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace cad_host {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr std::uint32_t kTransparentColour = 0xC0C0C0;

BITMAPINFO TopDown(int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  return info;
}

unsigned Alpha(std::uint32_t pixel) { return pixel >> 24; }
unsigned Channel(std::uint32_t pixel, int shift) { return (pixel >> shift) & 0xFF; }

/// The mean of the pixels in a rectangle with edges between pixels.
std::uint32_t Mean(const Pixels& source, double left, double top, double right, double bottom) {
  double alpha = 0;
  double colours[3] = {};
  for (int y = static_cast<int>(top); y < bottom; ++y) {
    for (int x = static_cast<int>(left); x < right; ++x) {
      if (x >= source.width || y >= source.height) continue;
      const double part = (std::min(right, x + 1.0) - std::max(left, double(x))) *
                          (std::min(bottom, y + 1.0) - std::max(top, double(y)));
      const std::uint32_t pixel = source.At(x, y);
      alpha += part * Alpha(pixel);
      for (int i = 0; i < 3; ++i) colours[i] += part * Alpha(pixel) * Channel(pixel, i * 8);
    }
  }
  if (alpha <= 0) return 0;
  const double area = (right - left) * (bottom - top);
  auto result = static_cast<std::uint32_t>(std::lround(alpha / area)) << 24;
  for (int i = 0; i < 3; ++i)
    result |= static_cast<std::uint32_t>(std::lround(colours[i] / alpha)) << (i * 8);
  return result;
}

/// Whether `size` bytes hold the pixels that the header promises.
bool HasAllPixels(const BITMAPINFOHEADER& info, std::size_t size) {
  constexpr LONG kLargest = 0x4000;
  if (info.biCompression != BI_RGB || info.biWidth <= 0 || info.biWidth > kLargest) return false;
  if (info.biHeight == 0 || std::abs(info.biHeight) > kLargest) return false;
  const auto row = (static_cast<std::size_t>(info.biWidth) * info.biBitCount + 31) / 32 * 4;
  return row * static_cast<std::size_t>(std::abs(info.biHeight)) <= size;
}

}  // namespace

Pixels ReadBitmap(const std::string& file) {
  BITMAPFILEHEADER header{};
  BITMAPINFOHEADER info{};
  if (file.size() < sizeof header + sizeof info) return {};
  std::memcpy(&header, file.data(), sizeof header);
  std::memcpy(&info, file.data() + sizeof header, sizeof info);
  if (!HasAllPixels(info, file.size() - std::min<std::size_t>(file.size(), header.bfOffBits))) return {};

  const window::WindowDc screen(nullptr);
  const window::UniqueBitmap bitmap(
      CreateDIBitmap(screen.Get(), &info, CBM_INIT, file.data() + header.bfOffBits,
                     reinterpret_cast<const BITMAPINFO*>(file.data() + sizeof header), DIB_RGB_COLORS));
  return FromBitmap(bitmap.get());
}

Pixels FromBitmap(HBITMAP bitmap) {
  BITMAP measures{};
  if (!GetObjectW(bitmap, sizeof measures, &measures)) return {};
  Pixels pixels{measures.bmWidth, measures.bmHeight, {}};
  pixels.values.resize(static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height));
  BITMAPINFO wanted = TopDown(pixels.width, pixels.height);
  const window::WindowDc screen(nullptr);
  if (!GetDIBits(screen.Get(), bitmap, 0, static_cast<UINT>(pixels.height), pixels.values.data(), &wanted,
                 DIB_RGB_COLORS)) {
    return {};
  }
  for (std::uint32_t& pixel : pixels.values) {
    pixel &= ~kOpaque;
    pixel = pixel == kTransparentColour ? 0 : pixel | kOpaque;
  }
  return pixels;
}

Pixels CutSquare(const Pixels& source, int left, int side, int size) {
  Pixels result{size, size, {}};
  result.values.reserve(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
  const double step = double(side) / size;
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      result.values.push_back(Mean(source, left + x * step, y * step, left + (x + 1) * step, (y + 1) * step));
    }
  }
  return result;
}

Pixels Greyed(Pixels pixels) {
  for (std::uint32_t& pixel : pixels.values) {
    const unsigned light = (Channel(pixel, 16) * 30 + Channel(pixel, 8) * 59 + Channel(pixel, 0) * 11) / 100;
    const unsigned pale = 128 + light / 4;
    pixel = (Alpha(pixel) * 6 / 10) << 24 | pale << 16 | pale << 8 | pale;
  }
  return pixels;
}

window::UniqueBitmap MakeCanvas(SIZE size) {
  const BITMAPINFO info = TopDown(size.cx, size.cy);
  void* bits = nullptr;
  return window::UniqueBitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
}

window::UniqueBitmap ToBitmap(const Pixels& pixels) {
  const BITMAPINFO info = TopDown(pixels.width, pixels.height);
  void* bits = nullptr;
  window::UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (bitmap) std::ranges::copy(pixels.values, static_cast<std::uint32_t*>(bits));
  return bitmap;
}

}  // namespace cad_host
