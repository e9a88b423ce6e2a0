// The drop-down list of a combo box. It takes no grab and no focus; the entry goes on taking keys.
// At most one list is down in the program, that of `openCombo`.

#include <algorithm>

#include "framework/controls/combo_box.h"
#include "framework/controls/widgets_xm.h"

#include <X11/cursorfont.h>

namespace {

// While a list is down: the program's dispatcher of button presses, which pressDispatched stands in
// for, and the shell of the combo box.
XtEventDispatchProc usualDispatcher = nullptr;
Widget watchedFrame = nullptr;

constexpr zEventKinds kFrameChanges{StructureNotifyMask};

bool isInside(Widget widget, Widget outer) {
  while (widget != nullptr && widget != outer) {
    widget = XtParent(widget);
  }
  return widget != nullptr;
}

Widget enclosingShell(Widget widget) {
  while (XtIsShell(widget) == False) {
    widget = XtParent(widget);
  }
  return widget;
}

// The arrow pointer, whatever the window below shows. Lives as long as the display.
Cursor listPointer(Display* display) {
  static const Cursor pointer = XCreateFontCursor(display, XC_left_ptr);
  return pointer;
}

// By the server: what Xt knows is old until the window manager has told of the last move.
zRect screenRect(Widget widget) {
  int x = 0;
  int y = 0;
  Window child = None;
  Dimension width = 0;
  Dimension height = 0;
  XTranslateCoordinates(XtDisplay(widget), XtWindow(widget), RootWindowOfScreen(XtScreen(widget)),
                        0, 0, &x, &y, &child);
  XtVaGetValues(widget, XmNwidth, &width, XmNheight, &height, nullptr);
  return zRect(zPoint{x, y}, zDimension{width, height});
}

}  // namespace

void zComboBoxBase::showDropDown() {
  if (shell == nullptr || isDropDownShown() || !XtIsRealized(inner) || !isEnabled()) {
    return;
  }
  const ziAlive alive(this);
  closeOpenDropDown();
  // What that notified may have shown another list, or this one.
  if (alive && openCombo == nullptr) {
    popUp();
    notifyParent(kComboShown);
  }
}

void zComboBoxBase::hideDropDown() {
  if (isDropDownShown()) {
    popDown();
    notifyParent(kComboHidden);
  }
}

void zComboBoxBase::toggleDropDown() {
  if (isDropDownShown()) {
    hideDropDown();
  } else {
    showDropDown();
  }
}

void zComboBoxBase::popUp() {
  placeList();
  XtManageChild(listHolder);
  XtRealizeWidget(shell);
  XDefineCursor(XtDisplay(shell), XtWindow(shell), listPointer(XtDisplay(shell)));
  XtPopup(shell, XtGrabNone);
  XRaiseWindow(XtDisplay(outerForm), XtWindow(outerForm));
  if (currentItem != ziListRows::kNone) {
    rows.select(currentItem);
  } else {
    rows.showFirst();
  }
  openCombo = this;
  watchOutside();
}

void zComboBoxBase::popDown() {
  openCombo = nullptr;
  stopWatching();
  XtPopdown(shell);
  XtUnmanageChild(listHolder);
}

// Below the entry, or above it at the lower edge of the screen.
void zComboBoxBase::placeList() {
  const zDimension whole = sizer()->size();
  Screen* screen = XtScreen(shell);
  const zRect place =
      dropDownRect(screenRect(inner), {whole.width, std::max(1, whole.height - textHeight)},
                   {WidthOfScreen(screen), HeightOfScreen(screen)});
  XtVaSetValues(shell, XmNx, place.left, XmNy, place.top, XmNwidth, std::max(1, place.width()),
                XmNheight, place.height(), nullptr);
  sizeList(place.size());
}

// The list closes when the window that the combo box is in moves or disappears, and when the user
// presses a mouse button elsewhere in the program.
void zComboBoxBase::watchOutside() {
  inListClick = false;
  usualDispatcher = XtSetEventDispatcher(XtDisplay(outerForm), ButtonPress, pressDispatched);
  watchedFrame = enclosingShell(outerForm);
  connect<&zComboBoxBase::onFrameEvent>(watchedFrame, kFrameChanges, this);
}

void zComboBoxBase::stopWatching() {
  XtSetEventDispatcher(XtDisplay(outerForm), ButtonPress, usualDispatcher);
  disconnect<&zComboBoxBase::onFrameEvent>(watchedFrame, kFrameChanges, this);
}

bool zComboBoxBase::onFrameEvent(XEvent& event) {
  const ziAlive alive(this);
  if (event.xany.window == XtWindow(watchedFrame) &&
      (event.type == ConfigureNotify || event.type == UnmapNotify)) {
    hideDropDown();
  }
  return !alive;
}

char zComboBoxBase::pressDispatched(XEvent* event) {
  const XtEventDispatchProc dispatch = usualDispatcher;
  Widget pressed = XtWindowToWidget(event->xany.display, event->xany.window);
  if (auto* const combo = static_cast<zComboBoxBase*>(openCombo); combo != nullptr) {
    combo->inListClick = isInside(pressed, combo->shell);
    if (!combo->inListClick && !isInside(pressed, combo->outerForm)) {
      combo->hideDropDown();
    }
  }
  // The press does its usual work as well.
  return dispatch(event);
}

zRect dropDownRect(const zRect& entry, const zDimension& list, const zDimension& screen) {
  const int left = keptInside(entry.pos(), list, screen).x;
  const int roomBelow = screen.height - entry.bottom;
  const int roomAbove = entry.top;
  const bool goesBelow = list.height <= roomBelow || roomBelow >= roomAbove;
  const int height = std::max(1, std::min(list.height, goesBelow ? roomBelow : roomAbove));
  const int top = goesBelow ? entry.bottom : entry.top - height;
  return zRect(zPoint{left, top}, zDimension{list.width, height});
}
