#include "tests/ui/support/windows.h"

#include "tests/ui/support/test_application.h"
#include "tests/ui/support/wait.h"

#include <X11/Xlib.h>
#include <Xm/XmAll.h>

namespace ui {

Window windowOf(Widget widget) {
  return widget != nullptr ? XtWindowOfObject(widget) : None;
}

ScreenArea areaOf(Window window) {
  const IgnoreXErrors ignoring;
  return screen::areaOf(display(), window);
}

ScreenArea areaOf(Widget widget) {
  if (XtIsWidget(widget)) {
    return areaOf(XtWindow(widget));
  }
  Position x = 0;
  Position y = 0;
  Dimension width = 0;
  Dimension height = 0;
  XtVaGetValues(widget, XmNx, &x, XmNy, &y, XmNwidth, &width, XmNheight, &height, nullptr);
  const ScreenArea parent = areaOf(windowOf(widget));
  return {parent.x + x, parent.y + y, width, height};
}

bool isViewable(Window window) {
  const IgnoreXErrors ignoring;
  return screen::isViewable(display(), window);
}

bool isViewable(Widget widget) {
  return widget != nullptr && (XtIsShell(widget) || XtIsManaged(widget)) &&
         isViewable(windowOf(widget));
}

Window windowWithTitle(const std::string& title) {
  const IgnoreXErrors ignoring;
  return screen::windowWithTitle(display(), title);
}

Window inputFocus() {
  return screen::inputFocus(display());
}

bool hasInputFocus(Window window) {
  const IgnoreXErrors ignoring;
  return screen::hasInputFocus(display(), window);
}

bool focusIs(Widget widget) {
  Widget shell = widget;
  while (shell != nullptr && !XtIsShell(shell)) {
    shell = XtParent(shell);
  }
  return shell != nullptr && XmGetFocusWidget(widget) == widget && hasInputFocus(windowOf(shell));
}

void waitForFocus(Widget widget) {
  waitFor([&] { return focusIs(widget); }, std::string("the focus at ") + XtName(widget));
}

Window waitForDialog(const std::string& title) {
  Window found = None;
  waitFor(
      [&] {
        found = windowWithTitle(title);
        return hasInputFocus(found);
      },
      "a window \"" + title + "\" with the focus");
  return found;
}

void waitForNoDialog(const std::string& title) {
  waitFor([&] { return windowWithTitle(title) == None; }, "the end of window \"" + title + "\"");
}

void closeByWindowManager(Window window) {
  screen::askToClose(display(), window);
  drain();
}

}  // namespace ui
