#include "frame.h"

#include <charconv>
#include <stdexcept>

namespace plm_client {
namespace {

constexpr std::string_view kLengthField = "Content-Length: ";
constexpr std::string_view kHeaderEnd = "\r\n\r\n";

}  // namespace

std::string MakeFrame(std::string_view content) {
  std::string frame(kLengthField);
  return frame.append(std::to_string(content.size())).append(kHeaderEnd).append(content);
}

std::optional<FrameExtent> FindFrame(std::string_view bytes) {
  const std::size_t header_end = bytes.find(kHeaderEnd);
  if (header_end == std::string_view::npos) return std::nullopt;
  // The host sends only this field and always writes it in this way.
  const std::string_view header = bytes.substr(0, header_end);
  std::size_t length = 0;
  const char* const last = header.data() + header.size();
  if (!header.starts_with(kLengthField) ||
      std::from_chars(header.data() + kLengthField.size(), last, length).ptr != last) {
    throw std::runtime_error("the host sent a header without a proper Content-Length");
  }
  const std::size_t start = header_end + kHeaderEnd.size();
  return FrameExtent{start, start + length};
}

}  // namespace plm_client
