#include "framework/layout/sizers.h"

namespace {

zDimension extentAlong(zGravity gravity, int extent) {
  switch (gravity) {
    case kGravityLeft:
    case kGravityRight:
      return {extent, 0};
    case kGravityTop:
    case kGravityBottom:
      return {0, extent};
    default:
      return {extent, extent};
  }
}

}  // namespace

zGravSizer::zGravSizer(zGravity gravity, const zDimension& extent, zSizer* parent)
    : zSizer(parent), wanted(extent) {
  setGravity(gravity);
}

zGravSizer::zGravSizer(zGravity gravity, int extent, zSizer* parent)
    : zGravSizer(gravity, extentAlong(gravity, extent), parent) {}

void zGravSizer::getInfo(zLayoutInfo& info) {
  reportSize(info, wanted);
}

zSizer* zGravSizer::query(int kind) {
  return kind == kSizerGrav ? this : zSizer::query(kind);
}

zGrowToFitSizer::zGrowToFitSizer(zGravity gravity, zGrowDirection fixed, int extent, zSizer* parent)
    : zGravSizer(gravity, fixed == kGrowFixedHeight ? zDimension{0, extent} : zDimension{extent, 0},
                 parent),
      direction(fixed) {}

void zGrowToFitSizer::getInfo(zLayoutInfo& info) {
  if (childCount() == 0) {
    const bool isSet = size().width != kNotSet && size().height != kNotSet;
    reportSize(info, isSet ? size() : extent());
    return;
  }
  askLayout(info);
  fixExtent(info.minSize);
  fixExtent(info.size);
  fixExtent(info.maxSize);
}

zSizer* zGrowToFitSizer::query(int kind) {
  return kind == kSizerGrowToFit ? this : zGravSizer::query(kind);
}

void zGrowToFitSizer::fixExtent(zDimension& size) const {
  if (direction == kGrowFixedHeight) {
    size.height = extent().height;
  } else {
    size.width = extent().width;
  }
}

void zLeafSizer::update(const zRect* rect) {
  apply(rect == nullptr ? this->rect() : *rect, kApplyMoves);
}

void zLeafSizer::getInfo(zLayoutInfo& info) {
  reportSize(info, size());
}

void zLeafSizer::apply(const zRect& rect, int /*noMove*/) {
  store(rect);
}

zSizer* zLeafSizer::query(int kind) {
  return kind == kSizerLeaf ? this : zSizer::query(kind);
}

void zSizeWithParent::parentSized(ziSizerWindow& window, const zDimension& newSize) {
  window.moveResize(0, 0, newSize.width, newSize.height);
}

void zSizeWithParent::getInfo(zLayoutInfo& info) {
  reportSize(info, {});
  info.gravity = kGravityCentre;
}

zSizer* zSizeWithParent::query(int kind) {
  return kind == kSizerSizeWithParent ? this : zSizer::query(kind);
}
