#pragma once

#include <string>

#include "framework/draw/xtfwd.h"

/// What tests of the application object need of X itself.

enum KeyModifiers : unsigned {
  kKeyPlain = 0,
  kKeyShift = 1,
  kKeyCapsLock = 2,
  kKeyControl = 4,
};

/// A key press with what Xlib makes of it.
class KeyPressEvent {
 public:
  /// `keyName` is the name of the key's plain keysym.
  KeyPressEvent(const char* keyName, unsigned modifiers);
  ~KeyPressEvent();
  KeyPressEvent(const KeyPressEvent&) = delete;
  KeyPressEvent& operator=(const KeyPressEvent&) = delete;

  long character = 0;
  long keysym = 0;
  XEvent* xevent() const { return event; }

 private:
  XEvent* event;
};

/// Sets a resource in the display's database.
void setXResource(const std::string& name, const std::string& value);

/// Provokes a protocol error, with the application's own error handler in force.
void mapUnknownWindow(unsigned long window);

void raiseXtWarning(const char* text);
void raiseXtError(const char* text);

/// Ends this process by a signal after some seconds, so that a hang shows as a failure.
void endProcessLater();
