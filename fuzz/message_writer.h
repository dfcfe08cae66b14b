/// @file Messages of the PLM client, right ones and nearly right ones.
#pragma once

#include <string>

#include "choices.h"

namespace fuzz {

/// JSON with the members of an answer to the request 7. As the choices say, some of them are wrong, missing,
/// repeated or too many.
std::string WriteMessage(Choices choices);

}  // namespace fuzz
