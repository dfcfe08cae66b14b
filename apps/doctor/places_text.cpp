#include "places_text.h"

#include "base/file_attributes.h"

namespace doctor {

std::wstring LookedAt(const std::vector<std::wstring>& places, const std::wstring& used) {
  std::wstring text;
  for (const std::wstring& place : places) {
    text += (text.empty() ? L"Looked at: " : L", ") + place;
    text += place == used ? L" (used)" : IsFile(place) ? L" (not needed)" : L" (missing)";
  }
  return text + L".";
}

}  // namespace doctor
