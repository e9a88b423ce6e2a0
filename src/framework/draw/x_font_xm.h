#pragma once

#include <memory>
#include <string>

// The one header of this folder that shows the X library: XFontStruct cannot be declared ahead.
// Only sources include it.
#include <X11/Xlib.h>

/// A font as the server loaded it; freed with the object, while its display must be open.
class ziXFont {
 public:
  /// Loads the best match for a font name; null when the server has none.
  static std::unique_ptr<ziXFont> load(Display* display, const std::string& name);

  ziXFont(Display* display, XFontStruct* font) : owner(display), loaded(font) {}
  ziXFont(const ziXFont&) = delete;
  ziXFont& operator=(const ziXFont&) = delete;
  ~ziXFont();

  XFontStruct* get() const { return loaded; }
  Font id() const { return loaded->fid; }
  int ascent() const { return loaded->ascent; }
  int descent() const { return loaded->descent; }
  /// Height of a line, pixels.
  int height() const { return loaded->ascent + loaded->descent; }
  /// Width of the first `length` bytes of `text`, pixels.
  int textWidth(const char* text, int length) const;

 private:
  Display* owner;
  XFontStruct* loaded;
};
