// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.

#include "framework/visuals/extra/more_visuals.h"

#include "framework/draw/display.h"
#include "framework/visuals/bevel.h"

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
