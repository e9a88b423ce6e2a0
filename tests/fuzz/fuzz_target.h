#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// What libFuzzer calls with each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the run when a property of the code under test does not hold.
inline void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}
