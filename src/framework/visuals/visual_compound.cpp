#include "framework/visuals/visual_compound.h"

#include "framework/draw/display.h"

#include <X11/Xlib.h>

ziCompound::~ziCompound() {
  // A visual takes itself out of the list.
  while (ziVisual* last = children.popBack()) {
    delete last;
  }
}

void ziCompound::remove(const ziVisual* visual) {
  children.remove(visual);
  ziCompound& top = root();
  top.captor = top.captor == visual ? nullptr : top.captor;
  top.hot = top.hot == visual ? nullptr : top.hot;
}

void ziCompound::paintIn(const zRect& area) {
  zDisplay* target = display();
  if (!isVisible() || target == nullptr) {
    return;
  }
  target->lock();
  applyAspects(*target);
  draw(*target);
  ziVisualDList::Iter walk(children);
  while (ziVisual* visual = walk.next()) {
    visual->paintIn(area);
  }
  resetAspects(*target);
  target->unlock();
}

ziVisual* ziCompound::hitTest(const zPoint& point) {
  ziVisual* found = nullptr;
  ziVisualDList::Iter walk(children);
  while (ziVisual* visual = walk.next()) {
    ziVisual* hit = isVisible() ? visual->hitTest(point) : nullptr;
    found = hit != nullptr ? hit : found;
  }
  return found;
}

ziVisual* ziCompound::receiver(const zEvent& event) {
  ziVisual* owner = mouseOwner();
  return owner != nullptr ? owner : hitTest(pointerAt(event));
}

int ziCompound::mouseDown(zEvent* event) {
  ziVisual* visual = receiver(*event);
  return visual == nullptr ? 0 : visual->mouseDown(event);
}

int ziCompound::mouseUp(zEvent* event) {
  ziVisual* visual = receiver(*event);
  return visual == nullptr ? 0 : visual->mouseUp(event);
}

int ziCompound::mouseMove(zEvent* event) {
  ziVisual* visual = receiver(*event);
  return visual == nullptr ? 0 : visual->mouseMove(event);
}

ziControlCompound::ziControlCompound(ziVisualHost& host)
    : ziCompound(nullptr, std::make_unique<zSizer>()), ownHost(host) {}

void ziControlCompound::layOut(const zRect& area) {
  if (area != rect()) {
    sizer()->update(&area);
  }
}

zPoint pointerAt(const zEvent& event) {
  const XEvent* xevent = event.xevent;
  if (xevent == nullptr) {
    return {};
  }
  switch (xevent->type) {
    case MotionNotify:
      return {xevent->xmotion.x, xevent->xmotion.y};
    case EnterNotify:
    case LeaveNotify:
      return {xevent->xcrossing.x, xevent->xcrossing.y};
    default:
      return {xevent->xbutton.x, xevent->xbutton.y};
  }
}

namespace {

unsigned heldButtons(const zEvent& event) {
  constexpr unsigned kAllButtons =
      Button1Mask | Button2Mask | Button3Mask | Button4Mask | Button5Mask;
  const XEvent* xevent = event.xevent;
  if (xevent == nullptr) {
    return 0;
  }
  const bool isMotion = xevent->type == MotionNotify;
  return (isMotion ? xevent->xmotion.state : xevent->xcrossing.state) & kAllButtons;
}

}  // namespace

bool isButtonHeld(const zEvent& event) {
  return (heldButtons(event) & Button1Mask) != 0;
}

bool isAnyButtonHeld(const zEvent& event) {
  return heldButtons(event) != 0;
}
