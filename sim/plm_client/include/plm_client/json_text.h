/// @file Reads and writes JSON.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "plm_client/request.h"

namespace plm_client {

/// `text` as a JSON string, quotes included.
std::string JsonString(std::string_view text);

/// The method of a request is not "invoke".
struct UnknownMethod : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Reads the message that a frame holds into `request`.
/// @throws UnknownMethod for another method; the id is then read. std::runtime_error if it is not a request
/// of
///         the protocol.
void ReadRequest(std::string_view message, Request& request);

}  // namespace plm_client
