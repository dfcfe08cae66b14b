/// @file The dialogs of the host: a custom property, a line of text.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "cad_host/custom_property.h"
#include "window/texts.h"

namespace cad_host {

/// The name of a property's type in scripts: "text", "number", "date" or "yesno".
std::wstring ScriptTypeName(long type);

/// The name of a property's type for the person.
std::wstring TypeName(const window::Texts& texts, long type);

/// Lets the person fill in a property. With `is_new` false its name stays as it is.
/// @return empty if the person cancels.
std::optional<CustomProperty> AskForProperty(HWND owner, const window::Texts& texts, CustomProperty property,
                                             bool is_new);

/// Lets the person fill in a line of text. @return empty if the person cancels.
std::optional<std::wstring> AskForLine(HWND owner, const window::Texts& texts, const std::wstring& title,
                                       const std::wstring& prompt);

}  // namespace cad_host
