/// @file The exception that the simulated host throws to the program that drives it. Add-ins never see it.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace cad_host {

/// The host cannot do what the person asked for. The message contains the file, the name or the value;
/// what() returns it in UTF-8.
class HostError : public std::runtime_error {
 public:
  explicit HostError(const std::wstring& message, HRESULT result = E_FAIL);

  const std::wstring& Message() const { return m_message; }
  HRESULT Result() const { return m_result; }

 private:
  std::wstring m_message;
  HRESULT m_result;
};

/// "S_OK", "S_FALSE", or the code such as "0x80004005".
std::wstring ResultText(HRESULT result);

}  // namespace cad_host
