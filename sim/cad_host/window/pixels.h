/// @file Pictures as pixels with transparency.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "window/gdi.h"

namespace cad_host {

/// A picture, from the top row down. A pixel is 0xAARRGGBB, and its colours are not multiplied by alpha.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> values;

  std::uint32_t At(int x, int y) const {
    return values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
};

/// The bitmap in the bytes of a .bmp file; pixels of the colour 0xC0C0C0 are transparent. Empty if the bytes
/// are no bitmap that the system reads.
Pixels ReadBitmap(const std::string& file);

/// The pixels of a bitmap of the system; those of the colour 0xC0C0C0 are transparent. Empty if they cannot
/// be read.
Pixels FromBitmap(HBITMAP bitmap);

/// The square of `side` pixels that begins at `left`, scaled to `size` pixels. What lies beyond the picture
/// is transparent.
Pixels CutSquare(const Pixels& source, int left, int side, int size);

/// The same in grey and half transparent.
Pixels Greyed(Pixels pixels);

/// An empty bitmap with 32 bits a pixel in this program's memory, where drawing is fast.
window::UniqueBitmap MakeCanvas(SIZE size);

/// A bitmap of the system with 32 bits a pixel.
window::UniqueBitmap ToBitmap(const Pixels& pixels);

}  // namespace cad_host
