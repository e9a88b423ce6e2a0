#include "tests/support/screen/keyboard.h"

#include <array>
#include <cstdlib>
#include <optional>

#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <X11/XKBlib.h>
#include <X11/Xlib.h>

namespace screen {

namespace {

constexpr int kShiftLevels = 2;

/// A key and whether Shift has to be down for the symbol wanted.
struct Key {
  KeyCode code = 0;
  bool needsShift = false;
};

std::optional<Key> findKey(Display* display, KeySym symbol) {
  int first = 0;
  int last = 0;
  XDisplayKeycodes(display, &first, &last);
  for (int level = 0; level < kShiftLevels; ++level) {
    for (int code = first; code <= last; ++code) {
      const auto key = static_cast<KeyCode>(code);
      if (XkbKeycodeToKeysym(display, key, 0, level) == symbol) {
        return Key{key, level == 1};
      }
    }
  }
  return std::nullopt;
}

bool isSpare(Display* display, KeyCode code) {
  for (int level = 0; level < kShiftLevels; ++level) {
    if (XkbKeycodeToKeysym(display, code, 0, level) != NoSymbol) {
      return false;
    }
  }
  return true;
}

/// Presses or releases the modifier keys in `modifiers`.
void fakeModifiers(Display* display, unsigned modifiers, bool areDown) {
  struct Modifier {
    unsigned bit;
    KeySym symbol;
  };
  constexpr std::array<Modifier, 3> kModifiers = {
      {{kShift, XK_Shift_L}, {kControl, XK_Control_L}, {kAlt, XK_Alt_L}}};
  for (const Modifier& modifier : kModifiers) {
    if ((modifiers & modifier.bit) != 0) {
      XTestFakeKeyEvent(display, XKeysymToKeycode(display, modifier.symbol), areDown ? True : False,
                        CurrentTime);
    }
  }
}

}  // namespace

bool hasKey(Display* display, KeySymbol symbol) {
  return findKey(display, symbol).has_value();
}

void assignSpareKey(Display* display, KeySymbol symbol) {
  int first = 0;
  int last = 0;
  XDisplayKeycodes(display, &first, &last);
  for (int code = last; code >= first; --code) {
    if (isSpare(display, static_cast<KeyCode>(code))) {
      XChangeKeyboardMapping(display, code, 1, &symbol, 1);
      return;
    }
  }
  std::abort();
}

void fakeKey(Display* display, KeySymbol symbol, unsigned modifiers) {
  const std::optional<Key> key = findKey(display, symbol);
  if (!key) {
    std::abort();
  }
  const unsigned held = modifiers | (key->needsShift ? kShift : kNoModifier);
  // The key goes up before its modifiers do: menus look at them on its release.
  fakeModifiers(display, held, true);
  XTestFakeKeyEvent(display, key->code, True, CurrentTime);
  XTestFakeKeyEvent(display, key->code, False, CurrentTime);
  fakeModifiers(display, held, false);
}

KeySymbol symbolOf(char character) {
  switch (character) {
    case '\n':
      return XK_Return;
    case '\t':
      return XK_Tab;
    default:
      // The symbols of Latin-1 have the numbers of its characters.
      return static_cast<unsigned char>(character);
  }
}

}  // namespace screen
