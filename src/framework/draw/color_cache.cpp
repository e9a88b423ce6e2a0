#include "framework/draw/color_cache.h"

#include <algorithm>
#include <cstdlib>

#include "framework/draw/screen.h"

#include <X11/Xlib.h>

namespace {

std::optional<zColorCache::Allocated> allocateOnScreen(const ziXColour& wanted) {
  Display* display = theScreen().display;
  if (display == nullptr) {
    return std::nullopt;
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
