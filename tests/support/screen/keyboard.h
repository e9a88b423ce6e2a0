#pragma once

#include "framework/draw/xtfwd.h"

/// Keys pressed by the XTEST extension. The requests are queued only, whoever calls flushes them.
namespace screen {

/// Numbers of X11/keysymdef.h, which test files may include: it defines names XK_... only.
using KeySymbol = unsigned long;

/// Modifiers held down round a key or a click; add them up.
enum Modifiers : unsigned {
  kNoModifier = 0,
  kShift = 1U << 0,
  kControl = 1U << 1,
  kAlt = 1U << 2,
};

/// Whether the keyboard, as this connection knows it, has the symbol.
bool hasKey(Display* display, KeySymbol symbol);

/// Gives a key without symbols this one, for the life of the server. All connections, this one
/// included, learn of it by an event.
void assignSpareKey(Display* display, KeySymbol symbol);

/// Presses and releases a key that hasKey. Shift is added where the symbol needs it.
void fakeKey(Display* display, KeySymbol symbol, unsigned modifiers = kNoModifier);

/// The symbol of a character of Latin-1; a line feed is the Return key.
KeySymbol symbolOf(char character);

}  // namespace screen
