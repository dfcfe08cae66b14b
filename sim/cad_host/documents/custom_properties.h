/// @file Custom properties of an open document.
#pragma once

#include <string>

#include "cad_host/document.h"

namespace cad_host {

/// The property `name`, without regard to case; null if there is none.
/// @param next the index where the search starts. It becomes the index after the property, so that finding
///        all properties in their order takes linear time.
const CustomProperty* FindProperty(const CustomProperties& properties, const std::wstring& name,
                                   std::size_t& next);

/// The text with every expression `"SW-Mass@bolt.SLDPRT"` replaced by the model's quantity of that name;
/// an expression with an unknown quantity stays unchanged.
std::wstring ResolveExpressions(const std::wstring& text, const ModelFile& model);

/// Changes the text of an existing property; `next` as for FindProperty.
/// @return swCustomInfoSetResult_e.
long SetProperty(Document& document, CustomProperties& properties, const std::wstring& name,
                 const std::wstring& text, std::size_t& next);

}  // namespace cad_host
