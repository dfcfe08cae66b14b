/// @file Decisions that the bytes of an input make.
#pragma once

#include <cstddef>
#include <string_view>

namespace fuzz {

/// Takes one decision after the other from bytes, so that a search which changes a byte changes one decision.
/// Where no bytes are left, each decision is the first possible one.
class Choices {
 public:
  explicit Choices(std::string_view bytes) : m_bytes(bytes) {}

  bool AreLeft() const { return !m_bytes.empty(); }

  /// A number below `limit`, which is 256 at most.
  std::size_t Below(std::size_t limit) {
    if (m_bytes.empty()) return 0;
    const auto byte = static_cast<unsigned char>(m_bytes.front());
    m_bytes.remove_prefix(1);
    return byte % limit;
  }

  bool Flag() { return Below(2) == 1; }

  template <class T, std::size_t Count>
  const T& Of(const T (&all)[Count]) {
    return all[Below(Count)];
  }

 private:
  std::string_view m_bytes;
};

}  // namespace fuzz
