#include "tests/ui/textarea/log_view.h"

#include <algorithm>
#include <string>

#include "framework/core/xm_handles_xm.h"
#include "tests/ui/support/ui_test.h"

#include <X11/extensions/Xfixes.h>
#include <Xm/XmAll.h>

int shownLength(Widget text) {
  return static_cast<int>(XmTextGetLastPosition(text));
}

int lineHeight(Widget text) {
  const std::string all = takeXtText(XmTextGetString(text));
  const XmTextPosition first = XmTextGetTopCharacter(text);
  const auto second =
      static_cast<XmTextPosition>(all.find('\n', static_cast<std::size_t>(first)) + 1);
  Position x = 0;
  Position upper = 0;
  Position lower = 0;
  XmTextPosToXY(text, first, &x, &upper);
  XmTextPosToXY(text, second, &x, &lower);
  return lower - upper;
}

std::vector<unsigned long> pointerShape() {
  XFixesCursorImage* image = XFixesGetCursorImage(ui::display());
  const std::vector<unsigned long> pixels(image->pixels,
                                          image->pixels + image->width * image->height);
  XFree(image);
  return pixels;
}
