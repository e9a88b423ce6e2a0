#include "fake_pane.h"

#include <gtest/gtest.h>

#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

#include <X11/Xutil.h>

namespace {

Display* x() {
  return theScreen().display;
}

}  // namespace

FakePane::FakePane() {
  XSetWindowAttributes attributes{};
  attributes.background_pixel = kBackground;
  attributes.override_redirect = True;
  attributes.event_mask = ExposureMask;
  window = XCreateWindow(x(), DefaultRootWindow(x()), 0, 0, kWidth, kHeight, 0, CopyFromParent,
                         InputOutput, CopyFromParent,
                         CWBackPixel | CWOverrideRedirect | CWEventMask, &attributes);
  XMapRaised(x(), window);
  XEvent event;
  XWindowEvent(x(), window, ExposureMask, &event);
  takeExposes();
}

FakePane::~FakePane() {
  XDestroyWindow(x(), window);
  XSync(x(), False);
}

void FakePane::makeReady(zWinDisplay& display) const {
  display.makeReady(x(), window);
}

std::vector<FakePane::Exposed> FakePane::takeExposes() const {
  XSync(x(), False);
  std::vector<Exposed> result;
  XEvent event;
  while (XCheckTypedWindowEvent(x(), window, Expose, &event) != 0) {
    const XExposeEvent& expose = event.xexpose;
    result.push_back({zRect(zPoint{expose.x, expose.y}, zDimension{expose.width, expose.height}),
                      expose.send_event != 0});
  }
  return result;
}

bool FakePane::hasCopyEvents() const {
  XSync(x(), False);
  XEvent event;
  return XCheckTypedWindowEvent(x(), window, GraphicsExpose, &event) != 0 ||
         XCheckTypedWindowEvent(x(), window, NoExpose, &event) != 0;
}

std::uint32_t FakePane::at(int px, int py) const {
  XImage* image = XGetImage(x(), window, px, py, 1, 1, AllPlanes, ZPixmap);
  const auto pixel = static_cast<std::uint32_t>(XGetPixel(image, 0, 0));
  XDestroyImage(image);
  return pixel;
}

int FakePane::count(const zRect& rect, std::uint32_t colour) const {
  XImage* image = XGetImage(x(), window, rect.left, rect.top, static_cast<unsigned>(rect.width()),
                            static_cast<unsigned>(rect.height()), AllPlanes, ZPixmap);
  int found = 0;
  for (int py = 0; py < rect.height(); ++py) {
    for (int px = 0; px < rect.width(); ++px) {
      found += XGetPixel(image, px, py) == colour ? 1 : 0;
    }
  }
  XDestroyImage(image);
  return found;
}

FakePane::PenState FakePane::penState(const zDisplay& display) {
  XGCValues values{};
  XGetGCValues(x(), display.copyContext(),
               GCLineWidth | GCLineStyle | GCCapStyle | GCJoinStyle | GCForeground, &values);
  return {values.line_width, values.line_style, values.cap_style, values.join_style,
          static_cast<std::uint32_t>(values.foreground)};
}

ziPixmapHandle leftPixelMask() {
  const char bits[] = {1};
  return {x(), XCreateBitmapFromData(x(), DefaultRootWindow(x()), bits, 2, 1)};
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // One connection for the whole process; drawing objects keep ids of it.
  theScreen().display = XOpenDisplay(nullptr);
  if (theScreen().display == nullptr) {
    return 1;
  }
  theScreen().readSize();
  theScreen().loadDefaultFont(ziScreen::kDefaultFontName);
  ziDrawCache::create();
  ziDrawCache::instance().makeFonts();
  const int result = RUN_ALL_TESTS();
  ziDrawCache::destroy();
  theScreen().defaultFont.reset();
  XCloseDisplay(theScreen().display);
  return result;
}
