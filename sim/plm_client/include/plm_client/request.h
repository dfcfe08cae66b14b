/// @file A request of the host.
#pragma once

#include <cstdint>
#include <string>

namespace plm_client {

/// One command of the host. Texts are UTF-8.
struct Request {
  std::uint64_t id = 0;
  std::string command{};  ///< such as QD_PLMLogin
  std::string text{};     ///< the command's JSON text; may be empty
  std::string frame{};    ///< the bytes as received, with the header
  int connection = 0;     ///< the number of its connection, counted from 1
};

}  // namespace plm_client
