/// @file Frames: `Content-Length: N`, an empty line, N bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace plm_client {

/// `content` with its header in front.
std::string MakeFrame(std::string_view content);

/// Where the content of a frame lies.
struct FrameExtent {
  std::size_t content_start;
  std::size_t end;
};

/// The extent of the frame that `bytes` begins with; nothing while its header is not whole.
/// @throws std::runtime_error where the header has no proper Content-Length.
std::optional<FrameExtent> FindFrame(std::string_view bytes);

}  // namespace plm_client
