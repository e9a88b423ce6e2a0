// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test. Texts and captions of buttons. The program's own buttons have empty captions: only
// the place of an image without a text matters to them, and that the tests of toolbars see.

#include "framework/visuals/visual_text.h"

#include <algorithm>

#include "framework/draw/display.h"
#include "framework/visuals/bevel.h"

namespace {

constexpr int kImageGap = 3;  // between image and text

}  // namespace

ziVisText::ziVisText(ziCompound* owner, std::unique_ptr<zSizer> sizer, const RWCString& text,
                     std::uint32_t style)
    : ziVisual(owner, std::move(sizer), style), string(text) {}

zDimension ziVisText::textSize() const {
  zDimension size;
  zDisplay* target = display();
  if (target != nullptr && !string.isEmpty()) {
    target->lock();
    target->textSize(size, string.c_str());
    target->unlock();
  }
  return size;
}

void ziVisText::drawAt(zDisplay& display, const zPoint& at, const zColor& colour) {
  if (string.isEmpty()) {
    return;
  }
  const zColor before = display.setTextColour(colour);
  drawText(display, at, string);
  display.setTextColour(before);
}

void ziVisText3d::drawLooking(zDisplay& display, const zPoint& up) {
  const zPoint moved{up.x + 1, up.y + 1};
  if (look == kVisualDisabled) {
    drawAt(display, moved, kBevelLight);
    drawAt(display, up, kBevelDark);
    return;
  }
  drawAt(display, look == kVisualDown || look == kVisualHeld ? moved : up, kColorBlack);
}

void ziVisText3dBmp::setHolder(ziVisText3dBmp** pointer) {
  if (holder != nullptr) {
    *holder = nullptr;
  }
  holder = pointer;
  if (holder != nullptr) {
    *holder = this;
  }
}

zPoint ziVisText3dBmp::arrange(const zRect& inner, const zDimension& image) {
  const zDimension text = textSize();
  const std::uint32_t arrangement = style() & kArrangeMask;
  const bool isBelow = arrangement == kTextBelow || arrangement == kTextBelowToo;
  const int gap = text.width > 0 && image.width > 0 ? kImageGap : 0;
  const zDimension both =
      isBelow ? zDimension{std::max(image.width, text.width), image.height + gap + text.height}
              : zDimension{image.width + gap + text.width, std::max(image.height, text.height)};
  const zRect block(centredIn(inner, both), both);
  if (isBelow) {
    textPlace = {centredIn(block, text).x, block.top + image.height + gap};
    return {centredIn(block, image).x, block.top};
  }
  textPlace = {block.left + image.width + gap, centredIn(block, text).y};
  return {block.left, centredIn(block, image).y};
}

void ziVisText3dBmp::draw(zDisplay& display) {
  drawLooking(display, textPlace);
}
