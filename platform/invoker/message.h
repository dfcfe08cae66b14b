/// @file The content of frames: JSON-RPC 2.0 messages.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace invoker {

/// The request that asks the client for `command`; `json` travels as a string, as it stands.
std::string MakeRequest(std::uint64_t id, std::wstring_view command, std::wstring_view json);

/// The text in the answer to request `id`.
/// @throws NoAnswer where `content` is anything but that answer, or tells of an error.
std::wstring ReadAnswer(std::string_view content, std::uint64_t id);

}  // namespace invoker
