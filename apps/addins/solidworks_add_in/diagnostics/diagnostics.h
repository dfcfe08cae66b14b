/// @file Log lines and message boxes, in the same form for all commands.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "log_sites.h"

/// "<hr=0x", `code` in lower-case hexadecimal without leading zeros, ">".
std::wstring CodeSuffix(HRESULT code);

/// Logs a failure: the site's text, `detail`, and the code's suffix.
void LogFailure(const LogSite& site, HRESULT code, std::wstring_view detail = {});

/// Logs a failure that has no code: the site's text alone.
void LogFailureText(const LogSite& site);

/// Logs a failure of a system call: the site's text, `detail`, the system error number in decimal, and the
/// suffix of `code`.
void LogSystemFailure(const LogSite& site, HRESULT code, DWORD system_error, std::wstring_view detail = {});

/// Logs information: the site's text and `detail`.
void LogInformation(const LogSite& site, std::wstring_view detail);

/// Shows `text` with the add-in's title and an OK button, and waits until the box is closed.
void ShowMessage(const std::wstring& text);

/// Shows a text of the string table like ShowMessage.
void ShowMessage(unsigned text_id);

/// Shows a text of the string table with a caption of the string table, without an owner window, and waits
/// until the box is closed.
/// @param style of the message box, MB_OK or MB_OKCANCEL.
/// @return IDOK or IDCANCEL; IDCANCEL also if the box was closed without a button.
int ShowCaptionedMessage(unsigned text_id, unsigned caption_id, unsigned style);

/// Logs, with `site`, and shows the user that the host did not open the file `path`.
void ReportFailedOpen(const LogSite& site, const std::wstring& path, HRESULT code);
