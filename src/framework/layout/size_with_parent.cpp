#include "framework/layout/size_with_parent.h"

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
