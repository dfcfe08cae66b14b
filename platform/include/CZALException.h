/// @file The exception of the platform libraries.
#pragma once

#include <string>
#include <utility>

/// A platform code and a readable message, thrown by value.
///
/// Known codes: 0xA3013000 a JSON member is missing, 0xA3013001 a JSON value is of the wrong type or the
/// text is malformed.
class CZALException {
 public:
  CZALException(long code, std::wstring message) : m_code(code), m_message(std::move(message)) {}

  /// The platform code, as an HRESULT: negative.
  long GetErrorCode() const noexcept { return m_code; }

  /// What went wrong; names the member, file or value.
  const std::wstring& GetErrorMessage() const noexcept { return m_message; }

 private:
  long m_code;
  std::wstring m_message;
};
