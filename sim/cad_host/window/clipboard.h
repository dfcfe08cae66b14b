/// @file Text on the clipboard.
#pragma once

#include <windows.h>

#include <string>

namespace cad_host {

/// Puts the text on the clipboard in the name of the window `owner`.
/// @throws HostError with the system's code if the clipboard does not take it.
void SetClipboardText(HWND owner, const std::wstring& text);

}  // namespace cad_host
