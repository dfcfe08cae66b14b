/// @file The system's dialogs in which a person names a file.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "cad_host/document.h"
#include "window/texts.h"

namespace cad_host {

// Each returns nothing if the person cancels.

std::optional<std::wstring> AskForModelToOpen(HWND owner, const window::Texts& texts);

/// Proposes the document's own file.
std::optional<std::wstring> AskForModelToSave(HWND owner, const window::Texts& texts,
                                              const Document& document);

/// A session script, to write (`is_new`) or to read.
std::optional<std::wstring> AskForScript(HWND owner, const window::Texts& texts, bool is_new);

}  // namespace cad_host
