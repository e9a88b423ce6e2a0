#pragma once

#include <memory>

#include "framework/draw/xtfwd.h"

struct zResId;

/// A pointer shape. Copies share the X cursor, which is freed with the last of them.
class zCursor {
 public:
  /// The default arrow: whatever the parent window shows; it has no X cursor of its own.
  zCursor() = default;
  /// A shape of the X cursor font (X11/cursorfont.h).
  zCursor(Display* display, unsigned fontShape);
  /// From a cursor resource (CUR data), in white and black. The default arrow, with a diagnostic
  /// message, if that cannot be.
  explicit zCursor(const zResId& resource);

  /// The X cursor id; 0 when there is none.
  unsigned long xCursor() const { return cursor == nullptr ? 0 : cursor->id; }

 private:
  struct Shared {
    Shared(Display* d, unsigned long i) : display(d), id(i) {}
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;
    ~Shared();

    Display* display;
    unsigned long id;
  };

  std::shared_ptr<Shared> cursor;
};
