/// @file The content of frames: JSON-RPC 2.0 messages.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace invoker {

/// The request that sends `command` to the client; `json` is sent as a string, unchanged.
/// @throws std::bad_alloc.
std::string MakeRequest(std::uint64_t id, std::wstring_view command, std::wstring_view json);

/// A request that sends nothing: every client answers it, and be it with an error.
/// @throws std::bad_alloc.
std::string MakePing();

/// The text in the answer to request `id`.
/// @throws NoAnswer if `content` is not that answer, or reports an error; std::bad_alloc.
std::wstring ReadAnswer(std::string content, std::uint64_t id);

}  // namespace invoker
