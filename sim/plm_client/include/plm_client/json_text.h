/// @file Reads and writes JSON.
#pragma once

#include <string>
#include <string_view>

#include "plm_client/request.h"

namespace plm_client {

/// `text` as a JSON string, quotes included.
std::string JsonString(std::string_view text);

/// Reads the message that a frame holds into `request`.
/// @throws std::runtime_error if it is not a request of the protocol.
void ReadRequest(std::string_view message, Request& request);

}  // namespace plm_client
