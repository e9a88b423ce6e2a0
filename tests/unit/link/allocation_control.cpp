#include "tests/unit/link/allocation_control.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

constexpr long kNever = -1;

long count = 0;
long successesLeft = kNever;

void* allocate(std::size_t size) noexcept {
  if (successesLeft == 0) {
    successesLeft = kNever;
    return nullptr;
  }
  if (successesLeft > 0) {
    --successesLeft;
  }
  ++count;
  return std::malloc(size > 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size) {
  void* const block = allocate(size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}

}  // namespace

void* operator new(std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocate(size);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}

long allocationCount() {
  return count;
}

FailingAllocation::FailingAllocation(long successes) {
  successesLeft = successes;
}

FailingAllocation::~FailingAllocation() {
  successesLeft = kNever;
}
