/// @file Custom properties of an open document.
#pragma once

#include <string>

#include "cad_host/document.h"

namespace cad_host {

/// The property `name`, without regard to case; null if there is none.
/// @param next the place to look at first. It becomes the place behind the property, so that asking for all
///        in their order takes time that grows with their number only.
const CustomProperty* FindProperty(const CustomProperties& properties, const std::wstring& name,
                                   std::size_t& next);

/// The text with every expression `"SW-Mass@bolt.SLDPRT"` replaced by the model's quantity of that name;
/// an expression about nothing known stays as it is.
std::wstring ResolveExpressions(const std::wstring& text, const ModelFile& model);

/// Gives a property that is there another text; `next` as for FindProperty.
/// @return swCustomInfoSetResult_e.
long SetProperty(Document& document, CustomProperties& properties, const std::wstring& name,
                 const std::wstring& text, std::size_t& next);

}  // namespace cad_host
