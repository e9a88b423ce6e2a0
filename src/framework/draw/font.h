#pragma once

#include "framework/draw/draw_obj.h"
#include "framework/draw/font_spec.h"
#include "framework/draw/x_handles.h"

struct ziFontCacheEntry;

/// A font to draw with. The loaded X font is shared and belongs to the font dictionary; a request
/// that nothing fits gives a font that measures by kFallbackCharSize and draws nothing.
class zFont : public zDrawObj {
 public:
  /// See zFontSpec::stock.
  explicit zFont(int stockNumber);
  /// The face name goes through mapFaceName.
  explicit zFont(const zFontSpec& spec);
  zFont(const zFont&) = delete;
  zFont& operator=(const zFont&) = delete;
  ~zFont() override;

  const zFontSpec& spec() const { return request; }
  /// 0 when it is no stock font.
  int stockNumber() const { return number; }
  /// The loaded font, or null. Include x_font_xm.h for its XFontStruct.
  const ziXFont* xFont() const;
  const ziFontCacheEntry* cacheEntry() const { return entry; }

  /// Size of the first `length` bytes of `text`, pixels.
  zDimension measure(const char* text, int length) const;

 protected:
  unsigned long lookUpPixel() const override;

 private:
  void realize();

  zFontSpec request;
  int number = 0;
  ziFontCacheEntry* entry = nullptr;
};
