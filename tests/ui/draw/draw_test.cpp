#include "draw_test.h"

#include "framework/draw/x_font_xm.h"
#include "tests/ui/draw/picture.h"
#include "tests/ui/support/ui_test.h"

DrawTest::DrawTest() {
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

DrawTest::~DrawTest() {
  XDestroyWindow(ui::display(), window);
}

std::string DrawTest::takeEvents() {
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

std::string DrawTest::picture(const zRect& area) const {
  return packed(pictureOf(ui::display(), window, area));
}

std::string DrawTest::told(const zRect& area) {
  std::string text;
  for (const int edge : {area.left, area.top, area.right, area.bottom}) {
    text += std::to_string(edge) + ',';
  }
  text.back() = ' ';
  return text;
}
