/// @file What the fuzz targets hold the product to.
#pragma once

#include <stdexcept>

namespace fuzz {

/// The code that a target tries did not do what it says.
class BrokenPromise : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

/// @throws BrokenPromise with `promise` unless it is `kept`.
inline void Require(bool kept, const char* promise) {
  if (!kept) throw BrokenPromise(promise);
}

}  // namespace fuzz
