// Where a window is, how large it is and how it looks.

#include <utility>

#include "framework/core/show_together.h"
#include "framework/core/window.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/xm_handles_xm.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

void zWindow::getInterior(zRect& rect) {
  rect = zRect(zPoint{}, ownSizer->size());
}

void zWindow::setShowState(int state) {
  if (mainWidget == nullptr) {
    return;
  }
  manageWidget(mainWidget, state != kShowHide);
}

void zWindow::setBackground(const zColor& colour) {
  backgroundRgb = colour;
  backPixel = static_cast<std::uint32_t>(ziDrawCache::instance().colours().pixel(backgroundRgb));
  applyBackground(*this);
}

void zWindow::takeBackgroundOf(const zWindow& other) {
  if (other.backPixel != kNoBackground) {
    setBackground(other.backgroundRgb);
  }
}

void zWindow::show(int state) {
  if (hasState(kShown)) {
    setShowState(state);
    return;
  }
  setState(kShown, true);
  if (state != kShowHide) {
    styleBits |= kStyleVisible;
  }
}

void zWindow::update() {
  if (mainWidget != nullptr) {
    XSync(XtDisplay(mainWidget), False);
  }
}

int zWindow::enable() {
  applySensitivity(true);
  zEvent event = zEvent::of(kMsgEnable, 1, this);
  zDispatch(event, this);
  return 1;
}

int zWindow::disable() {
  applySensitivity(false);
  zEvent event = zEvent::of(kMsgEnable, 0, this);
  zDispatch(event, this);
  return 1;
}

void zWindow::applySensitivity(bool on) {
  if (mainWidget != nullptr) {
    XtSetSensitive(mainWidget, on ? True : False);
  }
}

bool zWindow::isEnabled() const {
  Widget asked = sensitivityWidget();
  return asked != nullptr && XtIsSensitive(asked);
}

void zWindow::setFontSpec(const zFontSpec& spec, int redraw) {
  if (font.isEmpty() || !(font.font()->spec() == spec)) {
    setFont(zRCFont(spec), redraw);
  }
}

void zWindow::setFont(const zRCFont& newFont, int redraw) {
  if (newFont.isEmpty() || newFont == font) {
    return;
  }
  // The old font lives until the children have let go of it.
  const zRCFont oldFont = std::exchange(font, newFont);
  applyFontToWidget();
  zWindowDlist::Iter walk(childWindows);
  while (zWindow* child = walk.next()) {
    child->setFont(newFont, redraw);
  }
}

void zWindow::takeParentsFont() {
  if (parentWindow != nullptr && parentWindow->fontObject() != nullptr) {
    setFont(parentWindow->font, 0);
  }
}

void zWindow::applyFontToWidget() {
  const zFont* current = fontObject();
  if (mainWidget == nullptr || current == nullptr || current->xFont() == nullptr) {
    return;
  }
  XtVaSetValues(mainWidget, XmNfontList, fontListOf(current->xFont()->get()), nullptr);
}

void zWindow::invalidate(zRect* rect, int /*erase*/) {
  if (paintLock != 0 || !isRealized() || !XtIsManaged(mainWidget)) {
    return;
  }
  const zRect area = rect == nullptr ? zRect() : *rect;
  XClearArea(XtDisplay(mainWidget), XtWindow(mainWidget), area.left, area.top,
             static_cast<unsigned>(area.width()), static_cast<unsigned>(area.height()), True);
}

void zWindow::mapRectToWindow(zWindow* other, zRect& rect) {
  Position x = 0;
  Position y = 0;
  XtTranslateCoords(mainWidget, 0, 0, &x, &y);
  if (other != nullptr) {
    Position otherX = 0;
    Position otherY = 0;
    XtTranslateCoords(other->mainWidget, 0, 0, &otherX, &otherY);
    x = static_cast<Position>(x - otherX);
    y = static_cast<Position>(y - otherY);
  }
  rect.moveBy(x, y);
}
