#pragma once

#include <gmock/gmock.h>

#include "framework/layout/sizer.h"

/// A window that remembers where it was put.
class FakeWindow : public ziSizerWindow {
 public:
  void moveResize(std::int32_t x, std::int32_t y, std::int32_t width,
                  std::int32_t height) override {
    ++moves;
    place = zRect(zPoint{x, y}, zDimension{width, height});
  }
  bool hasWidget() const override { return widget; }
  void sizerReplaced(zSizer& sizer) override { newSizer = &sizer; }

  bool widget = true;
  int moves = 0;
  zRect place;
  zSizer* newSizer = nullptr;
};

inline void PrintTo(const zRect& r, std::ostream* out) {
  *out << '(' << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << ')';
}
inline void PrintTo(const zDimension& d, std::ostream* out) {
  *out << d.width << 'x' << d.height;
}
