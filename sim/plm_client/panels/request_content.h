/// @file What the requests of the host say.
#pragma once

#include <string>
#include <string_view>

#include "vault/records.h"

namespace plm_panels {

/// The members that the client reads of a request; those that are missing are empty.
struct RequestContent {
  std::wstring token{};                      ///< of the login that comes back
  std::wstring file_path{};                  ///< of the document that is imported
  std::wstring method{};                     ///< "LotinputDrawing" for a drawing
  plm_vault::Properties extract_info{};      ///< the document's properties
  plm_vault::Properties created_material{};  ///< "backfill_info_from_create_material"
};

/// Reads a request's JSON text, UTF-8. A text that is empty or no JSON object says nothing.
RequestContent ReadRequestContent(std::string_view text);

}  // namespace plm_panels
