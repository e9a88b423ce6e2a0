#include "framework/layout/sizer.h"

// The tree of sizers beside the tree of windows. Each sizer stands in at most one parent's list,
// and a parent's list never holds a sizer that is gone: the destructor unties both directions.

zSizer::zSizer(zSizer* parent) {
  setParent(parent);
}

zSizer::zSizer(int x, int y, int width, int height, zSizer* parent)
    : zSizer(zPoint{x, y}, zDimension{width, height}, parent) {}

zSizer::zSizer(const zPoint& pos, const zDimension& size, zSizer* parent)
    : place(pos), extents(size) {
  setParent(parent);
}

zSizer::~zSizer() {
  if (children != nullptr) {
    while (zSizer* child = children->popFront()) {
      child->parentSizer = nullptr;
    }
  }
  setParent(nullptr);
}

void zSizer::parentSized(ziSizerWindow& /*window*/, const zDimension& /*newSize*/) {}

void zSizer::update(const zRect* rect) {
  // Also for a window that stands in no other one nothing more is to do: apply() stores `rect`.
  apply(rect == nullptr ? this->rect() : *rect, kApplyDoesNotMove);
}

void zSizer::getInfo(zLayoutInfo& info) {
  if (count == 0) {
    reportSize(info, extents);
  } else {
    askLayout(info);
  }
}

void zSizer::apply(const zRect& rect, int noMove) {
  store(rect);
  layoutChildren(rect);
  const bool moves = mode == kWindowMoved || mode == kWindowMovedCtrl;
  // Windows at positions of their own are placed by explicit calls only.
  if (moves && noMove == kApplyMoves && gravityValue != kGravityOwnPosition &&
      servedWindow != nullptr && servedWindow->hasWidget()) {
    servedWindow->moveResize(rect.left, rect.top, rect.width(), rect.height());
  }
}

zSizer* zSizer::query(int kind) {
  return kind == kSizerPlain ? this : nullptr;
}

void zSizer::setParent(zSizer* parent) {
  if (parentSizer != nullptr) {
    parentSizer->removeChild(this);
  }
  parentSizer = parent;
  if (parent != nullptr) {
    parent->addChild(this);
  }
}

void zSizer::setWindow(ziSizerWindow* window, zWindowMode windowMode) {
  servedWindow = window;
  mode = windowMode;
}

void zSizer::reportSize(zLayoutInfo& info, const zDimension& wanted) const {
  info.reset();
  info.pos = place;
  info.setAllSizes(wanted);
  info.gravity = gravityValue;
}

void zSizer::askLayout(zLayoutInfo& info) {
  info.reset();
  activeLayout().getInfo(info, *children, count);
}

zLayout& zSizer::activeLayout() const {
  return layoutObject != nullptr ? *layoutObject : zNormalLayout::shared();
}

void zSizer::store(const zRect& rect) {
  place = rect.pos();
  extents = rect.size();
}

void zSizer::addChild(zSizer* child) {
  if (children == nullptr) {
    children = std::make_unique<zSizerDlist>();
  }
  children->append(child);
  ++count;
}

void zSizer::removeChild(zSizer* child) {
  if (children->remove(child)) {
    --count;
  }
}

void zSizer::layoutChildren(const zRect& rect) {
  if (count == 0) {
    return;
  }
  zRect room = mode == kWindowNone ? rect : zRect({}, rect.size());
  activeLayout().apply(room, *children, count);
}
