#include "fake_pane.h"

#include <gtest/gtest.h>

#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"
#include "tests/ui/draw/picture.h"

namespace {

Display* x() {
  return theScreen().display;
}

}  // namespace

FakePane::FakePane() {
  XSetWindowAttributes attributes{};
  attributes.background_pixel = kColorLightGrey.rgb();
  attributes.override_redirect = True;
  attributes.event_mask = ExposureMask;
  window = XCreateWindow(x(), DefaultRootWindow(x()), 0, 0, kAll.right, kAll.bottom, 0,
                         CopyFromParent, InputOutput, CopyFromParent,
                         CWBackPixel | CWOverrideRedirect | CWEventMask, &attributes);
  XMapRaised(x(), window);
  XEvent event;
  XWindowEvent(x(), window, ExposureMask, &event);
  takeEvents();
}

FakePane::~FakePane() {
  XDestroyWindow(x(), window);
  XSync(x(), False);
}

void FakePane::makeReady(zWinDisplay& display) const {
  display.makeReady(x(), window);
}

std::string FakePane::takeEvents() const {
  XSync(x(), False);
  std::string result;
  XEvent event;
  while (XPending(x()) > 0) {
    XNextEvent(x(), &event);
    if (event.type == GraphicsExpose || event.type == NoExpose) {
      result += "copied ";
    } else if (event.type == Expose) {
      const XExposeEvent& at = event.xexpose;
      result += at.send_event != False ? "sent " : "";
      for (const int edge : {at.x, at.y, at.x + at.width}) {
        result += std::to_string(edge) + ',';
      }
      result += std::to_string(at.y + at.height) + ' ';
    }
  }
  return result;
}

std::string FakePane::picture(const zRect& area) const {
  return packed(pictureOf(x(), window, area));
}

std::string FakePane::pixels() const {
  return pictureOf(x(), window, kAll);
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
