#pragma once

#include "framework/draw/displays.h"
#include "tests/ui/draw/picture.h"

inline constexpr zColor kRed{0xFF0000};
inline constexpr zColor kBlue{0x0000FF};
inline constexpr zColor kYellow{0xFFFF00};

/// A display, ready but not locked yet, on a mapped window of 24 by 16 pixels with the background
/// 0xC0C0C0. The test is the window's pane.
class DrawTest : public testing::Test, protected ziDisplayOwner {
 protected:
  inline static const zRect kAll{0, 0, 24, 16};

  DrawTest() {
    XSetWindowAttributes attributes{};
    attributes.background_pixel = kColorLightGrey.rgb();
    attributes.override_redirect = True;
    attributes.event_mask = ExposureMask;
    window = XCreateWindow(ui::display(), DefaultRootWindow(ui::display()), 0, 0, kAll.right,
                           kAll.bottom, 0, CopyFromParent, InputOutput, CopyFromParent,
                           CWBackPixel | CWOverrideRedirect | CWEventMask, &attributes);
    XMapRaised(ui::display(), window);
    XEvent event;
    XWindowEvent(ui::display(), window, ExposureMask, &event);
    takeEvents();
    display.makeReady(ui::display(), window);
  }
  ~DrawTest() override { XDestroyWindow(ui::display(), window); }

  Window displayWindow() const override { return window; }
  unsigned long backgroundPixel() const override { return kColorLightGrey.rgb(); }
  int displayPaintLock() const override { return paintLock; }
  zRCFont displayFont() const override { return font; }
  zDimension clientSize() const override { return kAll.size(); }

  /// The events that have come since the last call, each by its area; "sent " before one that was
  /// sent and not caused by the server, "copied " for the end of a copy.
  static std::string takeEvents() {
    XSync(ui::display(), False);
    std::string result;
    while (XPending(ui::display()) > 0) {
      XEvent event;
      XNextEvent(ui::display(), &event);
      if (event.type == GraphicsExpose || event.type == NoExpose) {
        result += "copied ";
      } else if (event.type == Expose) {
        const XExposeEvent& at = event.xexpose;
        result += at.send_event != False ? "sent " : "";
        result += told(zRect(zPoint{at.x, at.y}, zDimension{at.width, at.height}));
      }
    }
    return result;
  }
  std::string picture(const zRect& area = kAll) const { return pictureOf(window, area); }
  /// "left,top,right,bottom "
  static std::string told(const zRect& area) {
    std::string text;
    for (const int edge : {area.left, area.top, area.right, area.bottom}) {
      text += std::to_string(edge) + ',';
    }
    text.back() = ' ';
    return text;
  }

  int paintLock = 0;
  zRCFont font;
  Window window = 0;
  zWinDisplay display{*this};
  zBrush blue{kBlue};
  zBrush yellow{kYellow};
  zPen red{kRed};
};
