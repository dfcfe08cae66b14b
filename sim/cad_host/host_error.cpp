#include "cad_host/host_error.h"

#include <cwchar>

#include "CStringHelper.h"

namespace cad_host {

HostError::HostError(const std::wstring& message, HRESULT result)
    : std::runtime_error(CStringHelper::UnicodeToUTF8(message)), m_message(message), m_result(result) {}

std::wstring ResultText(HRESULT result) {
  if (result == S_OK) return L"S_OK";
  if (result == S_FALSE) return L"S_FALSE";
  wchar_t text[16];
  std::swprintf(text, std::size(text), L"0x%08lx", static_cast<unsigned long>(result));
  return text;
}

}  // namespace cad_host
