/// @file The font in which the system writes the texts of windows.
#pragma once

#include <string_view>

#include "window/dpi.h"
#include "window/gdi.h"

namespace window {

/// The system's font for messages at the density `dpi`, in which every text of a window is written.
UniqueFont MessageFont(Dpi dpi, bool bold = false);

/// How much room `text`, which is one line, takes in `font`.
SIZE SizeOfText(HFONT font, std::wstring_view text);

}  // namespace window
