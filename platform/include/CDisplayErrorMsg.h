/// @file The platform's error notice.
#pragma once

#include <string>

#include "CZALCIHandlerContextHelper.h"

class CDisplayErrorMsg {
 public:
  /// Shows a modal message box with the text, the code in hexadecimal and the path of the log folder; for
  /// a success code nothing is shown.
  /// @param style of the message box, such as 16 for the error icon.
  /// @return the button that ended the box (IDOK), 0 where none was shown.
  static long Display(const ZALErrorMsg& message, unsigned style);

  /// Gives a caption, in the language of the thread.
  using CaptionSource = std::wstring (*)();

  /// Chooses where the boxes of this module get their caption; it is "TAVO" without a source, or with null.
  static void SetCaptionSource(CaptionSource source) noexcept;
};
