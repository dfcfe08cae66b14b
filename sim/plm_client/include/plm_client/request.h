/// @file What the host asks.
#pragma once

#include <cstdint>
#include <string>

namespace plm_client {

/// One command of the host. Texts are UTF-8.
struct Request {
  std::uint64_t id = 0;
  std::string command{};  ///< such as QD_PLMLogin
  std::string text{};     ///< the command's JSON text; may be empty
  std::string frame{};    ///< the bytes as they came, header included
  int connection = 0;     ///< which connection it came over, the first being 1
};

}  // namespace plm_client
