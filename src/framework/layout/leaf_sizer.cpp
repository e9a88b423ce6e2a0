#include "framework/layout/leaf_sizer.h"

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

void zRedirSizer::getInfo(zLayoutInfo& info) {
  if (askInfo) {
    askInfo(info);
  } else {
    zLeafSizer::getInfo(info);
  }
}

void zRedirSizer::apply(const zRect& rect, int noMove) {
  store(rect);
  if (tellApply) {
    tellApply(rect, noMove);
  }
}
