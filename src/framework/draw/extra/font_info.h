#pragma once

// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.

#include "framework/draw/font.h"

/// Measures read out of a loaded font, in pixels; all 0 when the font could not be loaded.
class zFontInfo : public zStorable {
 public:
  explicit zFontInfo(const zFont& font);

  int ascent = 0;
  int descent = 0;
  int maxWidth = 0;  ///< of the widest character
  bool isFixedPitch = false;

  int height() const { return ascent + descent; }
};

/// The same with the names of the font.
class zFontDescript : public zFontInfo {
 public:
  explicit zFontDescript(const zFont& font);

  RWCString faceName;
  RWCString fullName;  ///< the X name that was loaded
};
