#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

/// What a target does with each input: bytes on the heap, where the sanitizer sees each step
/// outside.
void fuzz(std::span<const std::uint8_t> data);

/// Ends the run when a property of the code under test does not hold.
inline void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

// What libFuzzer calls. Each target is a program of one source, which includes this once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz({data, size});
  return 0;
}
