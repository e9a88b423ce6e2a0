#include "framework/draw/color.h"

namespace {

constexpr int kStretch = 0x101;  // 8 bits to 16, white to white
constexpr int kHighByte = 8;

std::uint16_t stretched(std::uint8_t component) {
  return static_cast<std::uint16_t>(component * kStretch);
}

}  // namespace

zColor zColor::fromX(const ziXColour& x) {
  zColor colour((static_cast<std::uint32_t>(x.red >> kHighByte) << kRedShift) |
                (static_cast<std::uint32_t>(x.green >> kHighByte) << kGreenShift) |
                static_cast<std::uint32_t>(x.blue >> kHighByte));
  colour.setX(x);
  return colour;
}

ziXColour zColor::x() const {
  return looked ? found : ziXColour{stretched(red()), stretched(green()), stretched(blue())};
}

void zColor::setX(const ziXColour& colour) {
  found = colour;
  looked = true;
}
