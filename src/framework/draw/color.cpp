#include "framework/draw/color.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

#include "framework/draw/screen.h"

#include <X11/Xlib.h>

namespace {

constexpr int kStretch = 0x101;  // 8 bits to 16, white to white
constexpr int kHighByte = 8;

std::uint16_t stretched(std::uint8_t component) {
  return static_cast<std::uint16_t>(component * kStretch);
}

constexpr unsigned kFullComponent = 65535;
constexpr int kComponentBits = 16;

/// One component of the colours that a visual shows without a colour map of its own.
struct TrueComponent {
  unsigned long mask;
  int bitsPerRgb;

  unsigned long largest() const { return mask >> std::countr_zero(mask); }
  /// What a server shows for the `step`th shade.
  std::uint16_t shade(unsigned long step) const {
    const unsigned long shown = (1UL << static_cast<unsigned>(bitsPerRgb)) - 1;
    const unsigned long ideal = step * kFullComponent / largest();
    return static_cast<std::uint16_t>(
        (ideal >> static_cast<unsigned>(kComponentBits - bitsPerRgb)) * kFullComponent / shown);
  }
  unsigned long nearestStep(unsigned wanted) const {
    const unsigned long below = wanted * largest() / kFullComponent;
    const unsigned long above = std::min(below + 1, largest());
    return std::abs(shade(above) - static_cast<int>(wanted)) <
                   std::abs(shade(below) - static_cast<int>(wanted))
               ? above
               : below;
  }
};

// On such a visual the masks tell the pixel; nobody need be asked.
zColorCache::Allocated trueColour(const Visual& visual, const ziXColour& wanted) {
  zColorCache::Allocated result;
  const auto settle = [&](unsigned long mask, std::uint16_t value) {
    const TrueComponent component{mask, visual.bits_per_rgb};
    const unsigned long step = component.nearestStep(value);
    result.pixel |= step << std::countr_zero(mask);
    return component.shade(step);
  };
  result.x = {settle(visual.red_mask, wanted.red), settle(visual.green_mask, wanted.green),
              settle(visual.blue_mask, wanted.blue)};
  return result;
}

std::optional<zColorCache::Allocated> allocateOnScreen(const ziXColour& wanted) {
  Display* display = theScreen().display;
  if (display == nullptr) {
    return std::nullopt;
  }
  if (const auto known = zColorCache::computed(display, wanted)) {
    return known;
  }
  XColor colour{};
  colour.red = wanted.red;
  colour.green = wanted.green;
  colour.blue = wanted.blue;
  if (XAllocColor(display, DefaultColormap(display, DefaultScreen(display)), &colour) == 0) {
    return std::nullopt;
  }
  return zColorCache::Allocated{colour.pixel, {colour.red, colour.green, colour.blue}};
}

int difference(const ziXColour& a, const ziXColour& b) {
  return std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
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

std::optional<zColorCache::Allocated> zColorCache::computed(Display* display,
                                                            const ziXColour& wanted) {
  const Visual& visual = *DefaultVisual(display, DefaultScreen(display));
  return visual.c_class == TrueColor ? std::optional(trueColour(visual, wanted)) : std::nullopt;
}

zColorCache::zColorCache() : zColorCache(allocateOnScreen) {}

unsigned long zColorCache::pixel(zColor& colour) {
  const Entry* entry = find(colour);
  if (entry == nullptr && entries.size() < kLimit) {
    if (const auto made = allocate(colour.x())) {
      colour.setX(made->x);
      entries.push_back({colour, *made});
      return made->pixel;
    }
  }
  if (entry == nullptr) {
    entry = nearest(colour.x());
  }
  if (entry == nullptr) {
    return 0;
  }
  colour.setX(entry->x.x);
  return entry->x.pixel;
}

zColor zColorCache::colourOf(unsigned long pixel) const {
  const auto known = std::find_if(entries.begin(), entries.end(),
                                  [&](const Entry& entry) { return entry.x.pixel == pixel; });
  if (known != entries.end()) {
    return zColor::fromX(known->x.x);
  }
  Display* display = theScreen().display;
  if (display == nullptr) {
    return kColorBlack;
  }
  XColor colour{};
  colour.pixel = pixel;
  XQueryColor(display, DefaultColormap(display, DefaultScreen(display)), &colour);
  return zColor::fromX({colour.red, colour.green, colour.blue});
}

const zColorCache::Entry* zColorCache::find(const zColor& colour) const {
  const auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
    return colour.hasX() ? entry.x.x == colour.x() : entry.colour == colour;
  });
  return found == entries.end() ? nullptr : &*found;
}

const zColorCache::Entry* zColorCache::nearest(const ziXColour& wanted) const {
  const auto found =
      std::min_element(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
        return difference(a.x.x, wanted) < difference(b.x.x, wanted);
      });
  return found == entries.end() ? nullptr : &*found;
}
