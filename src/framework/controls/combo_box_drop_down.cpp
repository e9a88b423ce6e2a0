// The drop-down list of a combo box. It takes no grab and no focus; the entry goes on taking keys.
// At most one list is down in the program, that of `openCombo`.

#include <algorithm>

#include "framework/controls/combo_box.h"
#include "framework/controls/combo_box_callbacks_xm.h"
#include "framework/controls/combo_box_place.h"

#include <X11/cursorfont.h>
#include <Xm/XmAll.h>

namespace {

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
  callbacks->watchOutside();
}

void zComboBoxBase::popDown() {
  openCombo = nullptr;
  callbacks->stopWatching();
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
