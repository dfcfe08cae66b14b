/// @file The platform's error message box.
#pragma once

#include <string>

#include "CZALCIHandlerContextHelper.h"

class CDisplayErrorMsg {
 public:
  /// Shows a modal message box with the text, the code in hexadecimal and the path of the log folder;
  /// shows nothing for a success code.
  /// @param style of the message box, such as 16 for the error icon.
  /// @return the button that closed the box (IDOK); 0 if no box was shown.
  static long Display(const ZALErrorMsg& message, unsigned style);

  /// Returns a caption, in the language of the thread.
  using CaptionSource = std::wstring (*)();

  /// Sets the function that returns the caption of this module's boxes. If there is none, or it is null, the
  /// caption is "TAVO".
  static void SetCaptionSource(CaptionSource source) noexcept;

  /// What stands before the code and before the log folder, such as "Error code:".
  struct Labels {
    std::wstring error_code;
    std::wstring log_folder;
  };

  /// Returns the labels, in the language of the thread.
  using LabelSource = Labels (*)();

  /// Sets the function that returns the labels of this module's boxes. If there is none, or it is null, or a
  /// label is empty, the label is English.
  static void SetLabelSource(LabelSource source) noexcept;
};
