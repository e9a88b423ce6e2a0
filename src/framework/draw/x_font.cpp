#include "framework/draw/x_font_xm.h"

namespace {

constexpr unsigned kBytes = 256;

bool isEmpty(const XCharStruct& glyph) {
  return (glyph.width | glyph.lbearing | glyph.rbearing | glyph.ascent | glyph.descent) == 0;
}

// The measures of one byte as the server sent them; empty ones for a byte without a glyph.
XCharStruct glyphOf(const XFontStruct& font, unsigned byte) {
  if (byte < font.min_char_or_byte2 || byte > font.max_char_or_byte2) {
    return {};
  }
  return font.per_char == nullptr ? font.max_bounds : font.per_char[byte - font.min_char_or_byte2];
}

}  // namespace

std::unique_ptr<ziXFont> ziXFont::load(Display* display, const std::string& name) {
  XFontStruct* font = XLoadQueryFont(display, name.c_str());
  return font == nullptr ? nullptr : std::make_unique<ziXFont>(display, font);
}

ziXFont::ziXFont(Display* display, XFontStruct* font)
    : owner(display), loaded(font), serverGlyphs(font->per_char) {
  if (font->min_byte1 == 0 && font->max_byte1 == 0) {
    measureEveryByte();
  }
}

// The toolkit takes a byte without a glyph for one without width, while the server draws the
// default character: all behind it would stand elsewhere than the toolkit thinks. The library's own
// table may be shared with the server and is left as it is.
void ziXFont::measureEveryByte() {
  const XCharStruct substitute = glyphOf(*loaded, loaded->default_char);
  glyphs.reserve(kBytes);
  for (unsigned byte = 0; byte < kBytes; ++byte) {
    const XCharStruct glyph = glyphOf(*loaded, byte);
    glyphs.push_back(isEmpty(glyph) ? substitute : glyph);
  }
  loaded->per_char = glyphs.data();
  loaded->min_char_or_byte2 = 0;
  loaded->max_char_or_byte2 = kBytes - 1;
}

ziXFont::~ziXFont() {
  loaded->per_char = serverGlyphs;
  XFreeFont(owner, loaded);
}

int ziXFont::textWidth(const char* text, int length) const {
  return XTextWidth(loaded, text, length);
}
