/// @file A custom property, as the person typed it.
#pragma once

#include <string>
#include <vector>

#include "host/constants.h"

namespace cad_host {

struct CustomProperty {
  std::wstring name;
  std::wstring text;  ///< as typed; may hold expressions such as "SW-Mass@bolt.SLDPRT", with the quotes
  swCustomInfoType_e type = swCustomInfoText;
};

using CustomProperties = std::vector<CustomProperty>;

}  // namespace cad_host
