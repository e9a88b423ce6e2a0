#include "framework/layout/layout.h"

#include <algorithm>

#include "framework/layout/sizer.h"

namespace {

/// What the children placed so far have left, and taken.
struct Room {
  zRect left;
  zDimension taken;
  bool hasFill = false;
};

/// The far edge for an extent from `near`; 0 reaches to the other edge of what is left.
int farEdge(int near, int extent, int limit) {
  return extent == 0 ? limit : near + extent;
}

zRect topLeftPart(const zRect& left, const zDimension& size) {
  return {left.left, left.top, farEdge(left.left, size.width, left.right),
          farEdge(left.top, size.height, left.bottom)};
}

zRect centred(zRect rect, const zRect& left) {
  const int dx = rect.right < left.right ? (left.right - rect.right) / 2 : 0;
  const int dy = rect.bottom < left.bottom ? (left.bottom - rect.bottom) / 2 : 0;
  rect.moveBy(dx, dy);
  return rect;
}

zRect atOwnPosition(const zLayoutInfo& info, const zRect& left) {
  return {info.pos.x, info.pos.y,
          info.size.width == kNotSet ? left.right : info.pos.x + info.size.width,
          info.size.height == kNotSet ? left.bottom : info.pos.y + info.size.height};
}

// Across its direction a strip of extent 0 reaches to the other edge. Along it, an extent of 0
// takes no room at all: so bars are hidden.
zRect takeVerticalStrip(Room& room, const zDimension& size, bool atRight) {
  zRect& left = room.left;
  const int x = atRight ? left.right - size.width : left.left;
  (atRight ? left.right : left.left) += atRight ? -size.width : size.width;
  room.taken.width += size.width;
  return {x, left.top, x + size.width, farEdge(left.top, size.height, left.bottom)};
}

zRect takeHorizontalStrip(Room& room, const zDimension& size, bool atBottom) {
  zRect& left = room.left;
  const int y = atBottom ? left.bottom - size.height : left.top;
  (atBottom ? left.bottom : left.top) += atBottom ? -size.height : size.height;
  room.taken.height += size.height;
  return {left.left, y, farEdge(left.left, size.width, left.right), y + size.height};
}

zRect placeChild(Room& room, const zLayoutInfo& info, int gravity) {
  switch (gravity) {
    case kGravityLeft:
    case kGravityRight:
      return takeVerticalStrip(room, info.size, gravity == kGravityRight);
    case kGravityTop:
    case kGravityBottom:
      return takeHorizontalStrip(room, info.size, gravity == kGravityBottom);
    case kGravityCentre:
      room.hasFill = true;
      return centred(topLeftPart(room.left, info.size), room.left);
    case kGravityFill:
      room.hasFill = true;
      return topLeftPart(room.left, info.size);
    default:
      return atOwnPosition(info, room.left);
  }
}

void raiseTo(zDimension& size, const zDimension& other) {
  size.width = std::max(size.width, other.width);
  size.height = std::max(size.height, other.height);
}

void stackBelow(zDimension& size, const zDimension& other) {
  size.width = std::max(size.width, other.width);
  size.height += other.height;
}

}  // namespace

zNormalLayout& zNormalLayout::shared() {
  static zNormalLayout layout;
  return layout;
}

void zNormalLayout::apply(zRect& rect, zSizerDlist& children, int /*count*/) {
  Room room{rect, {}, false};
  zSizerDlist::Iter walk(children);
  while (zSizer* child = walk.next()) {
    zLayoutInfo info;
    child->getInfo(info);
    const int gravity =
        child->query(kSizerOwnPosition) != nullptr ? int{kGravityOwnPosition} : info.gravity;
    child->apply(placeChild(room, info, gravity), kApplyMoves);
  }
  if (!room.hasFill) {
    rect = zRect(rect.pos(), room.taken);
  }
}

void zNormalLayout::getInfo(zLayoutInfo& info, zSizerDlist& children, int /*count*/) {
  int rightEdge = 0;
  zSizerDlist::Iter walk(children);
  while (zSizer* child = walk.next()) {
    zLayoutInfo own;
    child->getInfo(own);
    if (own.gravity == kGravityTop) {
      stackBelow(info.minSize, own.minSize);
      stackBelow(info.size, own.size);
      stackBelow(info.maxSize, own.maxSize);
    } else if (own.gravity == kGravityOwnPosition) {
      rightEdge = std::max(rightEdge, own.pos.x + own.size.width);
    } else {
      raiseTo(info.minSize, own.minSize);
      raiseTo(info.size, own.size);
      raiseTo(info.maxSize, own.maxSize);
    }
  }
  raiseToFixedChildren(info, rightEdge);
}

void raiseToFixedChildren(zLayoutInfo& info, int rightEdge) {
  if (info.size.width < rightEdge) {
    info.size.width = rightEdge;
    info.maxSize.width = std::max(info.maxSize.width, rightEdge);
  }
  // The height is held against the right edge too, which is intended: the sizes of dialogs and
  // bars with children at fixed positions were settled with it.
  if (info.size.height < rightEdge) {
    info.size.height = rightEdge;
    info.maxSize.height = std::max(info.maxSize.height, rightEdge);
  }
}
