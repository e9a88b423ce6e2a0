#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "framework/draw/color.h"
#include "framework/draw/x_handles.h"
#include "support/geometry.h"

/// The screen as the application object found it, and its default font. The application object
/// fills it in: `display` and the font when the display is open, the rest with the first frame. It
/// takes both out again before it closes the display.
struct ziScreen {
  ziScreen();
  ziScreen(const ziScreen&) = delete;
  ziScreen& operator=(const ziScreen&) = delete;
  ~ziScreen();

  Display* display = nullptr;  ///< null until open; drawing is possible once it is set
  int screenWidth = 0;         ///< pixels
  int screenHeight = 0;
  int screenWidthMM = 0;
  int screenHeightMM = 0;
  int dotsPerInchX = 0;
  int dotsPerInchY = 0;
  zDimension size() const { return {screenWidth, screenHeight}; }
  std::string defaultFontName;
  std::unique_ptr<ziXFont> defaultFont;  ///< null when not even the fallback could be loaded

  /// Reads size and resolution of the display's default screen.
  void readSize();
  /// Loads `name`, else the next one of lastFontNames(), into `defaultFont`.
  void loadDefaultFont(const std::string& name);
  /// What to ask for when nothing else can be loaded, in this order.
  std::array<std::string, 3> lastFontNames() const;

  static constexpr const char* kDefaultFontName = "-*-helvetica-bold-r-*--10-*";
  static constexpr const char* kFallbackFontName = "-*-helvetica-bold-r-*-*-10-*";
  static constexpr const char* kLastResortFontName = "fixed";
};

/// Pixels per inch, truncated; 0 when `millimetres` is not positive.
int dotsPerInch(int pixels, int millimetres);

/// The one screen.
ziScreen& theScreen();

class ziXFontDict;

/// What all drawing shares. Made by the application object before the display opens and destroyed
/// by it while the display is still open; used without that, it comes to life on first use.
class ziDrawCache {
 public:
  ziDrawCache();
  ziDrawCache(const ziDrawCache&) = delete;
  ziDrawCache& operator=(const ziDrawCache&) = delete;
  ~ziDrawCache();

  static ziDrawCache& instance();
  /// Null before it is made and after it is destroyed.
  static ziDrawCache* existing();
  static void create();
  static void destroy();

  zColorCache& colours() { return colourCache; }

  /// The font dictionary, or null until makeFonts().
  ziXFontDict* fonts() { return dictionary.get(); }
  /// Reads the server's font list; does nothing when that has been done.
  void makeFonts();
  void setFonts(std::unique_ptr<ziXFontDict> fonts);

  /// Size of the dialog unit's text in the default font, once it has been measured.
  std::optional<zDimension>& dialogReference() { return reference; }

 private:
  zColorCache colourCache;
  std::unique_ptr<ziXFontDict> dictionary;
  std::optional<zDimension> reference;
};

/// The pixel of a colour on the screen.
unsigned long pixelOf(zColor colour);
