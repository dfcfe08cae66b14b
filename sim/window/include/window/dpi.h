/// @file The density of a display, by which windows scale their sizes.
#pragma once

#include <windows.h>

namespace window {

/// Dots per inch. Sizes in code are for 96.
class Dpi {
 public:
  static constexpr int kNormal = 96;

  Dpi() = default;
  explicit Dpi(int value) : m_value(value) {}

  /// The density of the display on which the window `handle` is; of the system if there is none.
  static Dpi Of(HWND handle) {
    const UINT value = handle ? GetDpiForWindow(handle) : GetDpiForSystem();
    return Dpi(value ? static_cast<int>(value) : kNormal);
  }

  int Value() const { return m_value; }

  /// `size`, which is for 96 dots per inch, in pixels of this display.
  int Scale(int size) const { return MulDiv(size, m_value, kNormal); }

  bool operator==(const Dpi&) const = default;

 private:
  int m_value = kNormal;
};

}  // namespace window
