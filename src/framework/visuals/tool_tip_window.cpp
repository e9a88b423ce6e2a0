// The window of a tip: a drawing area in a popup shell of its own that the window manager does not
// manage.

#include <algorithm>
#include <string_view>
#include <vector>

#include "framework/core/window_events_xm.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/visuals/bevel.h"
#include "framework/visuals/tool_tip.h"

#include <X11/IntrinsicP.h>
#include <X11/Shell.h>
#include <Xm/VendorS.h>
#include <Xm/XmAll.h>

namespace {

constexpr zPoint kFromPointer = {3, 16};
constexpr zPoint kTextPlace = {6, 2};
constexpr const char* kShellName = "zAppTipShell";
constexpr const char* kFace = "Helv";
constexpr int kTenthsOfPoint = 100;

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  std::size_t end = 0;
  while ((end = text.find('\n')) != std::string_view::npos) {
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  lines.push_back(text);
  return lines;
}

int lineHeight(zDisplay& display) {
  zDimension size;
  display.textSize(size, "M");
  return size.height;
}

// Below the pointer, or above it where there is no room.
zPoint placeFor(const zPoint& pointer, const zDimension& size) {
  const zDimension screen = theScreen().size();
  const int below = pointer.y + kFromPointer.y;
  const bool fits = below + size.height <= screen.height;
  return keptInside(
      {pointer.x + kFromPointer.x, fits ? below : pointer.y - kFromPointer.x - size.height}, size,
      screen);
}

}  // namespace

ziToolHelper::ziToolHelper(zWindow* parent)
    : zPane(parent, new zSizer(zPoint{}, zDimension{1, 1}), kStyleChild | kStyleAbsolute, -1,
            kCreateLater) {
  ziToolHelper::createWidgets();
}

ziToolHelper::~ziToolHelper() {
  hide();
  zPane::removeEventHandlers();
  // The shell takes the drawing area with it.
  mainWidget = tipShell;
}

void ziToolHelper::createWidgets() {
  tipShell =
      XtVaCreatePopupShell(kShellName, vendorShellWidgetClass, parent()->widget(),
                           XmNoverrideRedirect, True, XmNsaveUnder, True, XmNallowShellResize, True,
                           XmNmarginHeight, 0, XmNmarginWidth, 0, XmNborderWidth, 0, nullptr);
  mainWidget = XtVaCreateManagedWidget("DrawingArea", xmDrawingAreaWidgetClass, tipShell, XmNwidth,
                                       1, XmNheight, 1, XmNresizePolicy, XmRESIZE_NONE, XmNuserData,
                                       this, XmNmarginHeight, 0, XmNmarginWidth, 0, XmNborderWidth,
                                       0, XmNtraversalOn, False, nullptr);
  connect<&zWindow::zWindowEventProc>(mainWidget, kWindowEvents, this);
  connect<&ziPainted::zPaneExposeProc>(mainWidget, kExposures, this);
  setBackground(backgroundColour());
  const zPrPoint size(0, kTenthsOfPoint);
  zPane::setFont(zRCFont(zFontSpec(kFace, size.size(), kFontNormal)), 0);
}

// A tip keeps its own font, whatever that of its parent becomes.
void ziToolHelper::setFont(const zRCFont& /*newFont*/, int /*redraw*/) {}

zDimension ziToolHelper::neededSize() {
  zDimension needed;
  display()->lock();
  for (const std::string_view line : linesOf(tip.view())) {
    zDimension size;
    // A length of 0 would stand for the whole text.
    if (!line.empty()) {
      display()->textSize(size, line.data(), static_cast<int>(line.size()));
    }
    needed.width = std::max(needed.width, size.width);
    needed.height += lineHeight(*display());
  }
  display()->unlock();
  return {needed.width + 2 * kTextPlace.x, needed.height + 2 * kTextPlace.y};
}

void ziToolHelper::showAt(const zPoint& pointer, const RWCString& newText) {
  tip = newText;
  const zDimension size = neededSize();
  const zPoint place = placeFor(pointer, size);
  sizer()->setSize(size);
  XtConfigureWidget(tipShell, static_cast<Position>(place.x), static_cast<Position>(place.y),
                    static_cast<Dimension>(size.width), static_cast<Dimension>(size.height), 0);
  show(kShowNoActivate);
  // The window may have the size of the last tip, and its picture.
  invalidate(nullptr, 1);
}

void ziToolHelper::show(int state) {
  shown = state != kShowHide;
  if (shown) {
    XtPopup(tipShell, XtGrabNone);
    XRaiseWindow(XtDisplay(tipShell), XtWindow(tipShell));
  } else {
    XtPopdown(tipShell);
  }
}

void ziToolHelper::hide() {
  if (shown) {
    show(kShowHide);
  }
}

int ziToolHelper::draw(zEvent* /*event*/) {
  zDisplay& on = *display();
  on.lock();
  zRect area;
  getInterior(area);
  drawFrame(on, area, kColorLightGrey);
  const int height = lineHeight(on);
  int y = kTextPlace.y;
  for (const std::string_view line : linesOf(tip.view())) {
    if (!line.empty()) {
      on.text(kTextPlace.x, y, line.data(), static_cast<int>(line.size()));
    }
    y += height;
  }
  on.unlock();
  return 0;
}
