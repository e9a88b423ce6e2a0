#include "tests/unit/link/allocation_control.h"

#include <cstdlib>
#include <new>

namespace {

long count = 0;
long successesLeft = -1;  // negative: no end of them

}  // namespace

// All forms, since sanitizers bring their own.
void* operator new(std::size_t size) {
  if (successesLeft == 0) {
    successesLeft = -1;
    throw std::bad_alloc();
  }
  successesLeft -= successesLeft > 0 ? 1 : 0;
  ++count;
  return std::malloc(size > 0 ? size : 1);
}

void* operator new[](std::size_t size) {
  return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept try {
  return operator new(size);
} catch (const std::bad_alloc&) {
  return nullptr;
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
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
  successesLeft = -1;
}
