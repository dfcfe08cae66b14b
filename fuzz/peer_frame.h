/// @file A frame of the pipe, read at once and as simply as it can be, for comparison.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "choices.h"

namespace fuzz {

/// What the bytes of a connection are, whatever comes after them.
struct PeerFrame {
  bool is_refused = false;
  std::optional<std::string_view> content{};  ///< if the frame is complete
  bool has_surplus = false;                   ///< bytes follow the frame
};

PeerFrame ReadFrameAsPeer(std::string_view bytes);

/// A frame whose header has lines of every kind, as the choices say; some are wrong.
std::string WriteFrame(Choices choices);

}  // namespace fuzz
