/// @file The platform's own diagnostics.
#pragma once

#include <source_location>
#include <string>
#include <string_view>

/// Writes an error line under the logger "platform", with the caller's place.
void LogPlatformError(const std::wstring& message,
                      std::source_location place = std::source_location::current()) noexcept;

/// Writes an information line under the logger "platform", with the caller's place.
void LogPlatformInformation(const std::wstring& message,
                            std::source_location place = std::source_location::current()) noexcept;

/// A function as a person would write it, `CZALCmdInvoker::Invoke`, from the compiler's form of it, such as
/// `std::wstring CZALCmdInvoker::Invoke(const std::wstring&)`: without result, arguments and namespaces that
/// have no name.
std::string PlainFunctionName(std::string_view function);
