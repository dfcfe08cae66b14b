// Lets libFuzzer call the target that the build names.
#include <cstddef>
#include <cstdint>

#include "targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
  return 0;
}
