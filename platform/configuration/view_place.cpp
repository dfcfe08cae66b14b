#include "view_place.h"

#include <algorithm>

std::wstring Quoted(std::wstring text) {
  std::ranges::replace_if(
      text, [](wchar_t c) { return c < L' '; }, L' ');
  return L"\"" + text + L"\"";
}

std::wstring PlaceOf(std::size_t index, const CJsonObject& item) {
  return L"item " + std::to_wstring(index + 1) + L" " + Quoted(item.GetStringValue(L"name")) + L": ";
}
