#include "framework/visuals/extra/more_visuals.h"

#include "framework/draw/display.h"

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
