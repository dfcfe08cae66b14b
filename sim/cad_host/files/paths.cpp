#include "paths.h"

#include "CStringHelper.h"

namespace cad_host {

bool SameName(const std::wstring& a, const std::wstring& b) {
  return CStringHelper::StringCompare(a, b, false) == 0;
}

std::wstring FileNameOf(const std::wstring& path) { return path.substr(path.find_last_of(L"\\/") + 1); }

std::wstring BaseNameOf(const std::wstring& path) {
  const std::wstring name = FileNameOf(path);
  return name.substr(0, name.rfind(L'.'));
}

}  // namespace cad_host
