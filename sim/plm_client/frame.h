/// @file Frames: `Content-Length: N`, an empty line, N bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace plm_client {

/// `content` with its header in front.
std::string MakeFrame(std::string_view content);

/// The position of a frame's content, and the end of the frame.
struct FrameExtent {
  std::size_t content_start;
  std::size_t end;
};

/// The extent of the frame at the start of `bytes`; empty while its header is incomplete.
/// @throws std::runtime_error if the header has no valid Content-Length.
std::optional<FrameExtent> FindFrame(std::string_view bytes);

}  // namespace plm_client
