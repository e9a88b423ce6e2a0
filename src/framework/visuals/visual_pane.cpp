// The windows in which visuals stand. Their widgets keep what is drawn when they are resized, while
// visuals move with the edges, so every change of the size asks for a whole paint.

#include "framework/visuals/visual_pane.h"

#include <utility>

#include "framework/core/window_events_xm.h"
#include "framework/draw/draw_obj.h"
#include "framework/draw/x_handles.h"

#include <Xm/XmAll.h>

namespace {

// A rectangle of all zeros stands for the whole window.
void addExposure(zRegion& region, const XExposeEvent& event, const zDimension& whole) {
  const zRect rect(zPoint{event.x, event.y}, zDimension{event.width, event.height});
  region.add(rect.isZero() ? zRect({}, whole) : rect);
}

}  // namespace

void ziCtrlPane::expose(XEvent& event) {
  if (event.type != Expose) {
    return;
  }
  if (!ownDisplay->isReady()) {
    ownDisplay->makeReady(event.xany.display, event.xany.window);
  }
  zRegion region;
  addExposure(region, event.xexpose, clientSize());
  XEvent queued;
  while (XCheckTypedWindowEvent(event.xany.display, event.xany.window, Expose, &queued) != False) {
    addExposure(region, queued.xexpose, clientSize());
  }
  ownDisplay->takeInvalidRects(region);
  ownDisplay->beginPaint(std::move(region));
  zEvent paint;
  paint.xevent = &event;
  paint.window = this;
  draw(&paint);
  ownDisplay->endPaint();
}

ziCtrlPane::ziCtrlPane(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text,
                       int id, const char* areaName)
    : zControl(parent, sizer, style, text, id), ownDisplay(std::make_unique<zWinDisplay>(*this)) {
  markClass(kClassCtrlPane);
  const Boolean isTabStop = (style & kStyleTabStop) != 0 ? True : False;
  Widget area = XtVaCreateWidget(areaName, xmDrawingAreaWidgetClass, createHolder(), XmNmarginWidth,
                                 0, XmNmarginHeight, 0, XmNborderWidth, 0, XmNresizePolicy,
                                 XmRESIZE_NONE, XmNtraversalOn, isTabStop, nullptr);
  connect<&ziCtrlPane::expose>(area, kExposures, this);
  finishCreation(kKindNone, area);
}

ziCtrlPane::~ziCtrlPane() {
  disconnect<&ziCtrlPane::expose>(mainWidget, kExposures, this);
}

int ziCtrlPane::draw(zEvent* /*event*/) {
  return 0;
}

int ziCtrlPane::size(zEvent* event) {
  invalidate(nullptr, 0);
  return zControl::size(event);
}

void ziCtrlPane::setBackground(const zColor& colour) {
  zControl::setBackground(colour);
  ownDisplay->setBackgroundBrush(std::make_unique<zBrush>(colour));
}

void ziCtrlPane::setFont(const zRCFont& newFont, int redraw) {
  zControl::setFont(newFont, redraw);
  ownDisplay->setFont(fontHandle());
  invalidate(nullptr, 0);
}

void ziCtrlPane::invalidate(zRect* rect, int erase) {
  ownDisplay->invalidate(rect, erase);
}

Window ziCtrlPane::displayWindow() const {
  return isRealized() ? XtWindow(mainWidget) : None;
}

unsigned long ziCtrlPane::backgroundPixel() const {
  Pixel pixel = 0;
  XtVaGetValues(mainWidget, XmNbackground, &pixel, nullptr);
  return pixel;
}

zRCFont ziCtrlPane::displayFont() const {
  return !fontHandle().isEmpty() || parent() == nullptr ? fontHandle() : parent()->fontHandle();
}

namespace {

bool isFirstButton(const zEvent& event) {
  return event.xevent != nullptr && event.xevent->xbutton.button == Button1;
}

// Only what lies in the exposed part is painted.
void paintVisuals(ziControlCompound& root, const zRect& area) {
  root.layOut(area);
  zRect exposed;
  root.display()->clipBounds(exposed);
  root.paintIn(exposed);
}

}  // namespace

ziVisualCtrlPane::ziVisualCtrlPane(zWindow* parent, zSizer* sizer, std::uint32_t style,
                                   const char* text, int id, const char* areaName)
    : ziCtrlPane(parent, sizer, style, text, id, areaName), root(*this) {}

int ziVisualCtrlPane::draw(zEvent* /*event*/) {
  zRect interior;
  getInterior(interior);
  paintVisuals(root, interior);
  return 0;
}

int ziVisualCtrlPane::handle(zEvent* event) {
  constexpr int kCrossing = 0;
  return event->message == kCrossing && event->xevent != nullptr ? root.mouseMove(event) : 0;
}

int ziVisualCtrlPane::mouseMove(zEvent* event) {
  return root.mouseMove(event);
}

int ziVisualCtrlPane::mouseButtonDown(zEvent* event) {
  return isFirstButton(*event) ? root.mouseDown(event) : 0;
}

int ziVisualCtrlPane::mouseButtonUp(zEvent* event) {
  return isFirstButton(*event) ? root.mouseUp(event) : 0;
}

ziVisualPane::ziVisualPane(zWindow* parent, zSizer* sizer, std::uint32_t style, int id)
    : zPane(parent, sizer, style, id), root(*this) {}

zRect ziVisualPane::visualArea() {
  zRect interior;
  getInterior(interior);
  return interior;
}

int ziVisualPane::draw(zEvent* /*event*/) {
  paintVisuals(root, visualArea());
  return 0;
}

int ziVisualPane::size(zEvent* event) {
  root.layOut(visualArea());
  invalidate(nullptr, 0);
  return zPane::size(event);
}

int ziVisualPane::mouseMove(zEvent* event) {
  return root.mouseMove(event);
}

int ziVisualPane::mouseButtonDown(zEvent* event) {
  return isFirstButton(*event) ? root.mouseDown(event) : 0;
}

int ziVisualPane::mouseButtonUp(zEvent* event) {
  return isFirstButton(*event) ? root.mouseUp(event) : 0;
}
