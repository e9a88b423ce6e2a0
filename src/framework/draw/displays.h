#pragma once

#include <memory>
#include <vector>

#include "framework/draw/display.h"

/// A display whose pixels can be read back.
class zReadableDisplay : public zDisplay {
 public:
  int getPixel(int x, int y, zColor& colour) override;
};

class zBitmap;

/// A display that only measures: it has no surface and is never ready.
class ziInfoDisplay : public zReadableDisplay {
 public:
  ziInfoDisplay() = default;

  void getInterior(zRect& rect) override { rect = zRect(); }

 protected:
  void lockAttach() override;
};

/// A display on an off-screen pixmap of the screen's depth; ready at once.
class zBitmapDisplay : public zReadableDisplay {
 public:
  /// Draws on a bitmap, which must outlive the display; never ready if that has no pixmap.
  explicit zBitmapDisplay(zBitmap& bitmap);

  void getInterior(zRect& rect) override { rect = zRect({}, extent); }

 protected:
  void lockAttach() override;

 private:
  zDimension extent;
};

/// What a window's display asks of its window.
class ziDisplayOwner {
 public:
  ziDisplayOwner() = default;
  ziDisplayOwner(const ziDisplayOwner&) = delete;
  ziDisplayOwner& operator=(const ziDisplayOwner&) = delete;
  virtual ~ziDisplayOwner() = default;

  /// The X window; 0 while there is none.
  virtual Window displayWindow() const = 0;
  /// The pixel of the window's background.
  virtual unsigned long backgroundPixel() const = 0;
  /// While non-zero, invalidate does nothing.
  virtual int displayPaintLock() const = 0;
  /// The window's own font, else its parent's; empty when neither has one.
  virtual zRCFont displayFont() const = 0;
  virtual zDimension clientSize() const = 0;
};

/// An area that waits for the next paint.
struct ziInvalidRect {
  zRect rect;  ///< all zero for the whole window
  bool erase = false;
};

/// The display of a window.
///
/// Life: made with its window; text can be measured from the first lock; becomes ready with the
/// window's first expose. A paint is takeInvalidRects(), beginPaint(), drawing, endPaint().
class zWinDisplay : public zReadableDisplay {
 public:
  /// `owner` must outlive the display.
  explicit zWinDisplay(ziDisplayOwner& owner);
  ~zWinDisplay() override;

  /// The window's X window has been made.
  void setXWindow(Window window) { xWindow = window; }
  /// The first expose has come: drawing may begin.
  void makeReady(Display* display, Window window);

  void clipBounds(zRect& rect) override;
  void getInterior(zRect& rect) override;
  /// Records the area. The first one since the last paint sends the window an Expose event.
  void invalidate(const zRect* rect, int erase) override;
  /// The clip box of the region.
  void invalidateRegion(const zRegion* region, int erase) override;

  bool hasInvalidRects() const { return !invalidRects.empty(); }
  /// The area recorded first; call only when there is one.
  const zRect& firstInvalidRect() const { return invalidRects.front().rect; }
  /// Clears what is to be erased, adds all recorded areas to `region` and empties the record.
  void takeInvalidRects(zRegion& region);

  /// Starts a paint of `region`: clips to it and locks.
  void beginPaint(zRegion region);
  /// Ends it: unlocks and removes all clipping, the user's clip region included.
  void endPaint();

  /// The brush of the window's background, which becomes the text background too. Owned; the
  /// previous one is released.
  void setBackgroundBrush(std::unique_ptr<zBrush> brush);

  /// Copies a part of the window; for scrolling.
  void copyArea(const zRect& source, const zPoint& to);

 protected:
  void lockAttach() override;

 private:
  void requestPaint(const zRect& area);
  void clearArea(const zRect& area);

  ziDisplayOwner& owner;
  std::vector<ziInvalidRect> invalidRects;
  std::unique_ptr<zBrush> background;
  bool painting = false;
  zRect paintRect;
};
