#include "window/font.h"

namespace window {

UniqueFont MessageFont(Dpi dpi, bool bold) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                             static_cast<UINT>(dpi.Value()));
  if (bold) metrics.lfMessageFont.lfWeight = FW_BOLD;
  return UniqueFont(CreateFontIndirectW(&metrics.lfMessageFont));
}

SIZE SizeOfText(HFONT font, std::wstring_view text) {
  const WindowDc dc(nullptr);
  const Selected selected(dc.Get(), font);
  SIZE size{};
  GetTextExtentPoint32W(dc.Get(), text.data(), static_cast<int>(text.size()), &size);
  return size;
}

}  // namespace window
