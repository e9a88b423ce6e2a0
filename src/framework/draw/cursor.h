#pragma once

#include <memory>

#include "framework/draw/xtfwd.h"

/// A pointer shape. Copies share the X cursor, which is freed with the last of them.
class zCursor {
 public:
  /// The default arrow: whatever the parent window shows; it has no X cursor of its own.
  zCursor() = default;
  /// A shape of the X cursor font (X11/cursorfont.h).
  zCursor(Display* display, unsigned fontShape);

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
