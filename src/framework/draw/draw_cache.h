#pragma once

#include <memory>
#include <optional>

#include "framework/draw/color_cache.h"
#include "framework/draw/font_dict.h"
#include "support/geometry.h"

/// What all drawing shares. Made by the application object before the display opens and destroyed
/// by it while the display is still open; used without that, it comes to life on first use.
class ziDrawCache {
 public:
  static ziDrawCache& instance();
  /// Null before it is made and after it is destroyed.
  static ziDrawCache* existing();
  static void create();
  static void destroy();

  zColorCache& colours() { return colourCache; }

  /// The font dictionary, or null until makeFonts().
  ziXFontDict* fonts() { return dictionary.get(); }
  /// Reads the server's font list; does nothing when that has been done.
  void makeFonts(int capacity);
  void setFonts(std::unique_ptr<ziXFontDict> fonts) { dictionary = std::move(fonts); }

  /// Size of the dialog unit's text in the default font, once it has been measured.
  std::optional<zDimension>& dialogReference() { return reference; }

 private:
  zColorCache colourCache;
  std::unique_ptr<ziXFontDict> dictionary;
  std::optional<zDimension> reference;
};
