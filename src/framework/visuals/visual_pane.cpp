// The windows in which visuals stand. Their widgets keep what is drawn when they are resized, while
// visuals move with the edges, so every change of the size asks for a whole paint.

#include "framework/visuals/visual_pane.h"

#include "framework/core/window_events_xm.h"
#include "framework/draw/draw_obj.h"

ziCtrlPane::ziCtrlPane(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text,
                       int id, const char* areaName)
    : zControl(parent, sizer, style, text, id), ziPainted(static_cast<zWindow&>(*this)) {
  markClass(kClassCtrlPane);
  const Boolean isTabStop = (style & kStyleTabStop) != 0 ? True : False;
  Widget area = XtVaCreateWidget(areaName, xmDrawingAreaWidgetClass, createHolder(), XmNmarginWidth,
                                 0, XmNmarginHeight, 0, XmNborderWidth, 0, XmNresizePolicy,
                                 XmRESIZE_NONE, XmNtraversalOn, isTabStop, nullptr);
  connect<&ziPainted::zPaneExposeProc>(area, kExposures, this);
  finishCreation(kKindNone, area);
}

ziCtrlPane::~ziCtrlPane() {
  disconnect<&ziPainted::zPaneExposeProc>(mainWidget, kExposures, this);
}

void ziCtrlPane::setBackground(const zColor& colour) {
  zControl::setBackground(colour);
  ownDisplay->setBackgroundBrush(std::make_unique<zBrush>(colour));
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
