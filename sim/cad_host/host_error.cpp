#include "cad_host/host_error.h"

#include "CStringHelper.h"
#include "base/hex_code.h"

namespace cad_host {

HostError::HostError(const std::wstring& message, HRESULT result)
    : std::runtime_error(CStringHelper::UnicodeToUTF8(message)), m_message(message), m_result(result) {}

std::wstring ResultText(HRESULT result) {
  if (result == S_OK) return L"S_OK";
  if (result == S_FALSE) return L"S_FALSE";
  return HexCode(result);
}

}  // namespace cad_host
