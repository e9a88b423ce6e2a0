#pragma once

#include <memory>
#include <string>
#include <vector>

// The one header of this folder that shows the X library: XFontStruct cannot be declared ahead.
// Only sources include it.
#include <X11/Xlib.h>

/// A font as the server loaded it; freed with the object, while its display must be open. In a font
/// of single bytes, each byte that has no glyph has the measures of the default character, which
/// the server draws for it.
class ziXFont {
 public:
  /// Loads the best match for a font name; null when the server has none.
  static std::unique_ptr<ziXFont> load(Display* display, const std::string& name);

  /// Takes `font` over.
  ziXFont(Display* display, XFontStruct* font);
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
  void measureEveryByte();

  Display* owner;
  XFontStruct* loaded;
  XCharStruct* serverGlyphs;        ///< the library's, which it frees with the font
  std::vector<XCharStruct> glyphs;  ///< ours, which stand in for them
};
