#pragma once

#include <cstdint>
#include <vector>

#include "framework/draw/displays.h"

/// A mapped window of 100 by 80 pixels on the default display, with a background of 0xC0C0C0, that
/// stands in for a pane. The display connection is opened once, by the test program's main.
class FakePane : public ziDisplayOwner {
 public:
  struct Exposed {
    zRect rect;
    bool isSynthetic = false;
  };
  struct PenState {
    int width = 0;
    int lineStyle = 0;
    int capStyle = 0;
    int joinStyle = 0;
    std::uint32_t colour = 0;
    bool operator==(const PenState&) const = default;
  };

  static constexpr std::uint32_t kBackground = 0xC0C0C0;
  static constexpr int kWidth = 100;
  static constexpr int kHeight = 80;

  /// Returns when the window's first expose has come.
  FakePane();
  ~FakePane() override;

  Window displayWindow() const override { return window; }
  unsigned long backgroundPixel() const override { return kBackground; }
  int displayPaintLock() const override { return paintLock; }
  zRCFont displayFont() const override { return font; }
  zDimension clientSize() const override { return {kWidth, kHeight}; }

  void makeReady(zWinDisplay& display) const;
  /// The Expose events that have come since the last call.
  std::vector<Exposed> takeExposes() const;
  /// Whether a copy reported what it could not copy, or that it lacked nothing.
  bool hasCopyEvents() const;
  /// The RGB value that the window shows.
  std::uint32_t at(int x, int y) const;
  /// How many pixels of a rectangle show a colour.
  int count(const zRect& rect, std::uint32_t colour) const;
  /// What the display's pen context holds.
  static PenState penState(const zDisplay& display);

  int paintLock = 0;
  zRCFont font;

 private:
  Window window = 0;
};

/// A one-bit pixmap of 2 by 1 pixels whose left pixel is set.
ziPixmapHandle leftPixelMask();
