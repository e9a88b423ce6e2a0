#pragma once

#include <memory>

#include "framework/draw/font.h"

/// The shared body of a zRCFont.
struct ziRCFontImp {
  explicit ziRCFontImp(int stockNumber) : font(stockNumber) {}
  explicit ziRCFontImp(const zFontSpec& spec) : font(spec) {}

  zFont font;
};

/// Handle on a font that windows and displays share. A copy shares the font; the last one deletes
/// it. An empty handle means no font.
class zRCFont {
 public:
  zRCFont() = default;
  explicit zRCFont(int stockNumber) : body(std::make_shared<ziRCFontImp>(stockNumber)) {}
  explicit zRCFont(const zFontSpec& spec) : body(std::make_shared<ziRCFontImp>(spec)) {}

  bool isEmpty() const { return body == nullptr; }
  /// The font, or null. It lives as long as any copy of this handle.
  zFont* font() const { return body == nullptr ? nullptr : &body->font; }

  /// Two handles are equal when they share the font.
  friend bool operator==(const zRCFont& a, const zRCFont& b) { return a.body == b.body; }

 private:
  std::shared_ptr<ziRCFontImp> body;
};
