#include "framework/visuals/visual.h"

#include <algorithm>

#include "framework/draw/display.h"
#include "framework/visuals/visual_compound.h"

ziVisual::ziVisual(ziCompound* compound, std::unique_ptr<zSizer> sizer, std::uint32_t style)
    : ownCompound(compound), ownSizer(std::move(sizer)), styleBits(style) {
  if (ownCompound != nullptr) {
    ownCompound->add(this);
    ownSizer->setParent(ownCompound->sizer());
  }
}

ziVisual::~ziVisual() {
  if (ownCompound != nullptr) {
    ownCompound->remove(this);
  }
}

bool ziVisual::intersects(const zRect& other) const {
  const zRect own = rect();
  return visible && own.left < other.right && other.left < own.right && own.top < other.bottom &&
         other.top < own.bottom;
}

bool ziVisual::containsPoint(const zPoint& point) const {
  const zRect own = rect();
  return visible && point.x >= own.left && point.x < own.right && point.y >= own.top &&
         point.y < own.bottom;
}

void ziVisual::paintIn(const zRect& area) {
  if (intersects(area)) {
    paint();
  }
}

ziVisual* ziVisual::hitTest(const zPoint& point) {
  return containsPoint(point) ? this : nullptr;
}

int ziVisual::mouseDown(zEvent* /*event*/) {
  return 0;
}
int ziVisual::mouseUp(zEvent* /*event*/) {
  return 0;
}
int ziVisual::mouseMove(zEvent* /*event*/) {
  return 0;
}

void ziVisual::paint() {
  zDisplay* target = display();
  if (!visible || target == nullptr) {
    return;
  }
  target->lock();
  applyAspects(*target);
  draw(*target);
  resetAspects(*target);
  target->unlock();
}

void ziVisual::applyAspects(zDisplay& target) {
  if (aspects != nullptr) {
    for (const auto& aspect : *aspects) {
      aspect->apply(target);
    }
  }
}

void ziVisual::draw(zDisplay& /*display*/) {}

void ziVisual::resetAspects(zDisplay& target) {
  if (aspects != nullptr) {
    for (auto aspect = aspects->rbegin(); aspect != aspects->rend(); ++aspect) {
      (*aspect)->undo(target);
    }
  }
}

zDisplay* ziVisual::display() const {
  return ownCompound == nullptr ? nullptr : ownCompound->display();
}

void ziVisControl::draw(zDisplay& target) {
  if (state == kVisualUp) {
    drawUp(target);
  } else if (state == kVisualDisabled) {
    drawDisabled(target);
  }
}

void ziVisControl::drawUp(zDisplay& /*display*/) {
  state = kVisualUp;
}

void ziVisControl::drawDisabled(zDisplay& /*display*/) {
  state = kVisualDisabled;
}

void ziVisControl::setVisualState(zVisualState newState) {
  state = newState;
  paint();
}
