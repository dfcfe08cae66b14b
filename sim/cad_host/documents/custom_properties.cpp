#include "custom_properties.h"

#include <algorithm>

#include "files/paths.h"
#include "files/property_set.h"
#include "host_values.h"

namespace cad_host {

const CustomProperty* FindProperty(const CustomProperties& properties, const std::wstring& name,
                                   std::size_t& next) {
  for (std::size_t looked_at = 0; looked_at < properties.size(); ++looked_at) {
    const CustomProperty& property = properties[(next + looked_at) % properties.size()];
    if (!SameName(property.name, name)) continue;
    next += looked_at + 1;
    return &property;
  }
  return nullptr;
}

std::wstring ResolveExpressions(const std::wstring& text, const ModelFile& model) {
  std::wstring resolved;
  std::size_t place = 0;
  while (place < text.size()) {
    const std::size_t begin = text.find(L'"', place);
    const std::size_t end = begin == std::wstring::npos ? begin : text.find(L'"', begin + 1);
    if (end == std::wstring::npos) break;
    const std::wstring expression = text.substr(begin + 1, end - begin - 1);
    const auto quantity = model.quantities.find(expression.substr(0, expression.find(L'@')));
    resolved += text.substr(place, begin - place);
    resolved += quantity == model.quantities.end() ? L"\"" + expression + L"\"" : quantity->second;
    place = end + 1;
  }
  return resolved + text.substr(std::min(place, text.size()));
}

long SetProperty(Document& document, CustomProperties& properties, const std::wstring& name,
                 const std::wstring& text, std::size_t& next) {
  auto* const property = const_cast<CustomProperty*>(FindProperty(properties, name, next));
  if (!property) return swCustomInfoSetResult_NotPresent;
  if (!FitsType(text, property->type)) return swCustomInfoSetResult_TypeMismatch;
  property->text = text;
  document.changed = true;
  return swCustomInfoSetResult_OK;
}

}  // namespace cad_host
