#pragma once

#include <gtest/gtest.h>

#include <string>

#include "framework/draw/displays.h"

inline constexpr zColor kRed{0xFF0000};
inline constexpr zColor kBlue{0x0000FF};
inline constexpr zColor kYellow{0xFFFF00};

/// A display, ready but not locked yet, on a mapped window of 24 by 16 pixels with the background
/// 0xC0C0C0. The test is the window's pane.
class DrawTest : public testing::Test, protected ziDisplayOwner {
 protected:
  inline static const zRect kAll{0, 0, 24, 16};

  DrawTest();
  ~DrawTest() override;

  Window displayWindow() const override { return window; }
  unsigned long backgroundPixel() const override { return kColorLightGrey.rgb(); }
  int displayPaintLock() const override { return paintLock; }
  zRCFont displayFont() const override { return font; }
  zDimension clientSize() const override { return kAll.size(); }

  /// The events that have come since the last call, each by its area; "sent " before one that was
  /// sent and not caused by the server, "copied " for the end of a copy.
  static std::string takeEvents();
  /// See pictureOf and packed.
  std::string picture(const zRect& area = kAll) const;
  /// "left,top,right,bottom "
  static std::string told(const zRect& area);

  int paintLock = 0;
  zRCFont font;
  Window window = 0;
  zWinDisplay display{*this};
  zBrush blue{kBlue};
  zBrush yellow{kYellow};
  zPen red{kRed};
};
