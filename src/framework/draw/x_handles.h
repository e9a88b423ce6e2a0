#pragma once

#include <memory>
#include <utility>

#include "framework/draw/xtfwd.h"

/// Owners of what the X library hands out. Each frees its thing when it goes; the display must
/// still be open then.

/// Owner of an id or pointer that is freed together with its display.
template <class Id, void (*Free)(Display*, Id)>
class ziXHandle {
 public:
  ziXHandle() = default;
  ziXHandle(Display* display, Id id) : owner(display), value(id) {}
  ziXHandle(ziXHandle&& other) noexcept
      : owner(other.owner), value(std::exchange(other.value, Id{})) {}
  ziXHandle& operator=(ziXHandle&& other) noexcept {
    std::swap(owner, other.owner);
    std::swap(value, other.value);
    return *this;
  }
  ziXHandle(const ziXHandle&) = delete;
  ziXHandle& operator=(const ziXHandle&) = delete;
  ~ziXHandle() { reset(); }

  Id get() const { return value; }
  explicit operator bool() const { return value != Id{}; }
  /// Gives up ownership.
  Id release() { return std::exchange(value, Id{}); }
  void reset() {
    if (value != Id{}) {
      Free(owner, std::exchange(value, Id{}));
    }
  }

 private:
  Display* owner = nullptr;
  Id value{};
};

void ziFreeGc(Display* display, GC gc);
void ziFreePixmap(Display* display, Pixmap pixmap);

using ziGcHandle = ziXHandle<GC, ziFreeGc>;
using ziPixmapHandle = ziXHandle<Pixmap, ziFreePixmap>;

struct ziRegionFree {
  void operator()(Region region) const;
};
using ziRegionHandle = std::unique_ptr<struct _XRegion, ziRegionFree>;

/// The owner of an XFontStruct; see x_font_xm.h.
class ziXFont;
