// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.

#include "framework/visuals/extra/more_visuals.h"

#include "framework/draw/display.h"
#include "framework/visuals/bevel.h"
#include "framework/visuals/status_item.h"

namespace {

constexpr int kSpaceKey = ' ';

}  // namespace

ziVisPanelInternal::ziVisPanelInternal(ziCompound* owner, std::unique_ptr<zSizer> sizer,
                                       std::uint32_t style, int edgeThickness)
    : ziVisControl(owner, std::move(sizer), style),
      thickness(edgeThickness),
      outerLine((style & kOuterLine) != 0 ? 1 : 0),
      hasInnerEdge((style & kInnerEdge) != 0) {}

void ziVisPanelInternal::drawUp(zDisplay& display) {
  ziVisControl::drawUp(display);
  drawEdges(display);
}

void ziVisPanelInternal::drawDisabled(zDisplay& display) {
  ziVisControl::drawDisabled(display);
  drawEdges(display);
}

void ziVisPanelInternal::drawEdges(zDisplay& display) {
  const bool isRaised = (style() & kRaisedEdge) != 0;
  insideRect = rect();
  if (outerLine != 0) {
    drawFrame(display, insideRect, kColorBlack);
  }
  drawBevel(display, insetRect(insideRect, outerLine), isRaised ? zBevel::kRaised : zBevel::kSunken,
            thickness);
  insideRect = insetRect(insideRect, thickness + outerLine);
  if (hasInnerEdge) {
    drawBevel(display, insideRect, isRaised ? zBevel::kSunken : zBevel::kRaised);
    insideRect = insetRect(insideRect, 1);
  }
}

void ziPenAspect::apply(zDisplay& display) {
  display.pushPen(&pen);
}
void ziPenAspect::undo(zDisplay& display) {
  display.popPen();
}

void ziBrushAspect::apply(zDisplay& display) {
  display.setBrush(&brush);
}
void ziBrushAspect::undo(zDisplay& display) {
  display.popBrush();
}

void ziFontAspect::apply(zDisplay& display) {
  display.pushFont(spec);
}
void ziFontAspect::undo(zDisplay& display) {
  display.popFont();
}

void ziTextBackcolorAspect::apply(zDisplay& display) {
  before = display.setBackColour(backColour);
}
void ziTextBackcolorAspect::undo(zDisplay& display) {
  display.setBackColour(before);
}

void ziVisual::addAspect(std::unique_ptr<ziAspect> aspect) {
  if (aspects == nullptr) {
    aspects = std::make_unique<std::vector<std::unique_ptr<ziAspect>>>();
  }
  aspects->push_back(std::move(aspect));
}

void ziVisText::draw(zDisplay& display) {
  drawAt(display, {rect().left, centredIn(rect(), textSize()).y}, kColorBlack);
}

void ziVisText3d::draw(zDisplay& display) {
  drawLooking(display, centredIn(rect(), textSize()));
}

void ziVisButton::drawIdle(zDisplay& /*display*/) {
  state = kVisualIdle;
}

void ziVisBmpButtonInternal::drawIdle(zDisplay& display) {
  if ((style() & kLatching) == 0) {
    drawUp(display);
    return;
  }
  ziVisButton::drawIdle(display);
  drawAll(display);
}

bool ziCompound::intersects(const zRect& area) const {
  ziVisualDList::Iter walk(children);
  while (const ziVisual* visual = walk.next()) {
    if (isVisible() && visual->intersects(area)) {
      return true;
    }
  }
  return false;
}

void ziCompound::paint() {
  paintIn(rect());
}

ziVisualHost* ziCompound::host() const {
  return compound() == nullptr ? nullptr : compound()->host();
}

void ziVisButton::press() {
  if (isEnabled() && !isPressed()) {
    stateAtPress = state;
    show(&ziVisButton::drawDown);
  }
}

void ziVisButton::click() {
  if (isPressed()) {
    show(&ziVisButton::drawUp);
    fire(nullptr);
  }
}

int ziCtrlPane::draw(zEvent* /*event*/) {
  return 0;
}

int ziCtrlPane::size(zEvent* event) {
  invalidate(nullptr, 0);
  return zControl::size(event);
}

void ziCtrlPane::setFont(const zRCFont& newFont, int redraw) {
  zControl::setFont(newFont, redraw);
  ownDisplay->setFont(fontHandle());
  invalidate(nullptr, 0);
}

void ziCtrlPane::invalidate(zRect* rect, int erase) {
  ownDisplay->invalidate(rect, erase);
}

int ziVCBCtrlButton::keyArrived(zEvent& event, bool typed) {
  if (event.wparam == kSpaceKey) {
    button().press();
    return 1;
  }
  return ziCtrlBase::keyArrived(event, typed);
}

int ziVCBCtrlButton::keyReleased(zEvent* event) {
  if (event->wparam != kSpaceKey) {
    return 0;
  }
  button().click();
  return 1;
}

zBitmapButton::zBitmapButton(zWindow* parent, zSizer* sizer, int style, const char* captionText,
                             int id, zBitmap* bitmap)
    : ziVCBCtrlButton(parent, sizer, kStyleChild | kStyleTabStop, static_cast<std::uint32_t>(style),
                      captionText, id, bitmap) {}

void zStatusClock::setUse24Hours(bool on) {
  use24Hours = on;
  refit();
}

void zStatusClock::setSeparator(const RWCString& newSeparator) {
  separator = newSeparator;
  refit();
}

void zStatusClock::setColonVisible(bool on) {
  colonVisible = on;
  setText(timeText());
}
