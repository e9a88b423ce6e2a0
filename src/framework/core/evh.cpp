#include "framework/core/evh.h"

namespace {

constexpr int kClassCount = 80;

}  // namespace

zEvH::zEvH() {
  markClass(kClassEvH);
}

zEvH::~zEvH() = default;

int zEvH::handle(zEvent* /*event*/) {
  return 0;
}

bool zEvH::isA(int classNumber) const {
  if (classNumber < 0 || classNumber >= kClassCount) {
    return false;
  }
  return (classBits[classNumber / 8] & (1U << (classNumber % 8))) != 0;
}

void zEvH::markClass(int classNumber) {
  auto& bits = classBits[classNumber / 8];
  bits = static_cast<std::uint8_t>(bits | (1U << (classNumber % 8)));
}

void zEvH::setState(StateFlag flag, bool on) {
  stateFlags = static_cast<std::uint16_t>(on ? stateFlags | flag : stateFlags & ~flag);
}
