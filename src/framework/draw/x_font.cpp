#include "framework/draw/x_font_xm.h"

std::unique_ptr<ziXFont> ziXFont::load(Display* display, const std::string& name) {
  XFontStruct* font = XLoadQueryFont(display, name.c_str());
  return font == nullptr ? nullptr : std::make_unique<ziXFont>(display, font);
}

ziXFont::~ziXFont() {
  XFreeFont(owner, loaded);
}

int ziXFont::textWidth(const char* text, int length) const {
  return XTextWidth(loaded, text, length);
}
