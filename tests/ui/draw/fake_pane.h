#pragma once

#include <string>

#include "framework/draw/displays.h"

inline constexpr zColor kRed{0xFF0000};
inline constexpr zColor kBlue{0x0000FF};
inline constexpr zColor kYellow{0xFFFF00};

/// A mapped window of 24 by 16 pixels with the background 0xC0C0C0 that stands in for a pane.
class FakePane : public ziDisplayOwner {
 public:
  inline static const zRect kAll{0, 0, 24, 16};

  /// Returns when the window's first expose has come.
  FakePane();
  ~FakePane() override;

  Window displayWindow() const override { return window; }
  unsigned long backgroundPixel() const override { return kColorLightGrey.rgb(); }
  int displayPaintLock() const override { return paintLock; }
  zRCFont displayFont() const override { return font; }
  zDimension clientSize() const override { return kAll.size(); }

  void makeReady(zWinDisplay& display) const;
  /// The events that have come since the last call, each as "left,top,right,bottom "; "sent "
  /// before one that was sent and not caused by the server, "copied " for the end of a copy.
  std::string takeEvents() const;
  /// See pictureOf and packed.
  std::string picture(const zRect& area = kAll) const;
  /// See pictureOf.
  std::string pixels() const;

  int paintLock = 0;
  zRCFont font;

 private:
  Window window = 0;
};
