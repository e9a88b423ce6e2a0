#include "framework/visuals/visual_button.h"

#include <algorithm>

#include "framework/core/window.h"
#include "framework/draw/display.h"
#include "framework/visuals/bevel.h"
#include "framework/visuals/visual_compound.h"

namespace {

constexpr int kDefaultFrameWidth = 1;
constexpr int kEdgeWidth = 2;  // a black frame and the bevel

int imageCount(std::uint32_t images) {
  switch (images) {
    case kBmpImageUpDown:
    case kBmpImageUpDisabled:
      return 2;
    case kBmpImageUpDownDisabled:
      return 3;
    default:
      return 1;
  }
}

}  // namespace

ziVisButton::ziVisButton(ziCompound* owner, std::unique_ptr<zSizer> sizer, std::uint32_t style,
                         int id)
    : ziVisControl(owner, std::move(sizer), style), buttonId(id) {
  state = (style & kLatching) != 0 ? kVisualIdle : kVisualUp;
}

void ziVisButton::draw(zDisplay& display) {
  switch (state) {
    case kVisualIdle:
      return drawIdle(display);
    case kVisualDown:
      return drawDown(display);
    case kVisualHeld:
      return drawHeld(display);
    default:
      return ziVisControl::draw(display);
  }
}

void ziVisButton::drawDown(zDisplay& /*display*/) {
  state = (style() & kLatching) != 0 && state == kVisualIdle ? kVisualDown : kVisualHeld;
}
void ziVisButton::drawHeld(zDisplay& /*display*/) {
  state = kVisualHeld;
}

// The state follows also where nothing can be drawn yet.
void ziVisButton::show(Drawing drawing) {
  zDisplay* target = display();
  if (target == nullptr) {
    return;
  }
  target->lock();
  applyAspects(*target);
  (this->*drawing)(*target);
  resetAspects(*target);
  target->unlock();
}

void ziVisButton::showAsBefore() {
  show(stateAtPress != kVisualIdle ? static_cast<Drawing>(&ziVisButton::drawUp)
                                   : &ziVisButton::drawIdle);
}

void ziVisButton::disarm() {
  armed = false;
  compound()->setHotButton(nullptr);
  compound()->releaseMouse();
}

void ziVisButton::setEnabled(bool on) {
  if (on == isEnabled()) {
    return;
  }
  if (buttonDown || armed) {
    buttonDown = false;
    disarm();
  }
  const zVisualState up = (style() & kLatching) != 0 ? kVisualIdle : kVisualUp;
  setVisualState(on ? up : kVisualDisabled);
}

int ziVisButton::mouseDown(zEvent* /*event*/) {
  if (!isEnabled()) {
    return 0;
  }
  buttonDown = true;
  // The pointer need not have moved since the last click, or since the button came under it.
  armed = true;
  stateAtPress = state;
  compound()->captureMouse(this);
  show(&ziVisButton::drawDown);
  return 1;
}

int ziVisButton::mouseMove(zEvent* event) {
  if (!isEnabled()) {
    return 0;
  }
  if (buttonDown && !isButtonHeld(*event)) {
    // The release went elsewhere, as to a window that took the pointer.
    buttonDown = false;
    showAsBefore();
    disarm();
  }
  if (!containsPoint(pointerAt(*event))) {
    if (isPressed()) {
      showAsBefore();
    }
    if (armed && !buttonDown) {
      disarm();
    }
  } else if (isButtonHeld(*event)) {
    if (!isPressed() && armed && buttonDown) {
      show(&ziVisButton::drawDown);
    }
  } else if (!isAnyButtonHeld(*event) && !armed && !buttonDown) {
    compound()->captureMouse(this);
    compound()->setHotButton(this);
    armed = true;
  }
  return 1;
}

int ziVisButton::mouseUp(zEvent* event) {
  if (!buttonDown) {
    return 0;
  }
  buttonDown = false;
  if (!isPressed()) {
    // The pointer has left.
    if (state != stateAtPress) {
      setVisualState(stateAtPress);
    }
    disarm();
    return 1;
  }
  show(&ziVisButton::drawUp);
  disarm();
  fire(event->xevent);
  return 1;
}

int ziVisButton::fire(XEvent* cause) {
  ziVisualHost* host = compound()->host();
  zWindow* window = host == nullptr ? nullptr : host->visualWindow();
  zEvent event = zEvent::of(kMsgCommand, buttonId, window);
  event.xevent = cause;
  const ziAlive alive(window);
  const Binding first = pressHandler;
  const Binding second = clickHandler;
  if (first.call(event) != 0 || !alive) {
    return 1;
  }
  if (second.call(event) != 0 || !alive) {
    return 1;
  }
  zWindow* parent = window->parent();
  const ziAlive parentAlive(parent);
  if (parent == nullptr || zDispatch(event, parent) != 0 || !parentAlive) {
    return 1;
  }
  return parent->handle(&event);
}

ziVisBmpButtonInternal::ziVisBmpButtonInternal(ziCompound* owner, std::unique_ptr<zSizer> sizer,
                                               std::uint32_t style, int id, zBitmap* image,
                                               Ownership ownership)
    : ziVisButton(owner, std::move(sizer), style, id),
      bitmap(image),
      bitmapShared(ownership == Ownership::kShared),
      frameCount(imageCount(images())) {}

void ziVisBmpButtonInternal::setCaption(ziVisText3dBmp* text) {
  if (caption != nullptr) {
    caption->setHolder(nullptr);
  }
  if (text != nullptr) {
    text->setHolder(&caption);
  }
}

ziVisBmpButtonInternal::~ziVisBmpButtonInternal() {
  setCaption(nullptr);
  if (!bitmapShared) {
    const std::unique_ptr<zBitmap> last(bitmap);
  }
}

zDimension ziVisBmpButtonInternal::imageSize() const {
  return bitmap == nullptr ? zDimension()
                           : zDimension{bitmap->width() / frameCount, bitmap->height()};
}

zRect ziVisBmpButtonInternal::innerRect() const {
  const int frame = (style() & kBmpDefaultFrame) != 0 ? kDefaultFrameWidth : 0;
  return insetRect(rect(), frame + (hasEdge() ? kEdgeWidth : 0));
}

void ziVisBmpButtonInternal::drawUp(zDisplay& display) {
  ziVisButton::drawUp(display);
  drawAll(display);
}

void ziVisBmpButtonInternal::drawDisabled(zDisplay& display) {
  ziVisButton::drawDisabled(display);
  drawAll(display);
}

void ziVisBmpButtonInternal::drawDown(zDisplay& display) {
  ziVisButton::drawDown(display);
  drawAll(display);
}

void ziVisBmpButtonInternal::drawHeld(zDisplay& display) {
  ziVisButton::drawHeld(display);
  drawAll(display);
}

void ziVisBmpButtonInternal::drawAll(zDisplay& display) {
  const zDimension image = imageSize();
  const zPoint place =
      caption != nullptr ? caption->arrange(innerRect(), image) : centredIn(innerRect(), image);
  const int shift = isPressed() && (style() & kBmpFlat) == 0 ? 1 : 0;
  imageX = place.x + shift;
  imageY = place.y + shift;
  drawBody(display);
  drawImage(display);
  if (caption != nullptr) {
    caption->setLook(visualState());
    caption->draw(display);
  }
}

void ziVisBmpButtonInternal::drawBody(zDisplay& display) {
  zRect edge = rect();
  if ((style() & kBmpDefaultFrame) != 0) {
    fillArea(display, edge, kColorWhite);
    drawFrame(display, edge, kColorBlack);
    edge = insetRect(edge, kDefaultFrameWidth);
  }
  fillArea(display, edge, kFaceColour);
  if (hasEdge()) {
    drawFrame(display, edge, kColorBlack);
    drawBevel(display, insetRect(edge, 1), isPressed() ? zBevel::kSunken : zBevel::kRaised);
  }
}

void ziVisBmpButtonInternal::drawImage(zDisplay& display) {
  const zDimension size = imageSize();
  const bool isGrayed = visualState() == kVisualDisabled && (images() & kBmpImageUpDisabled) == 0;
  const zBitmap* shown = isGrayed ? grayImage() : bitmap;
  if (shown == nullptr) {
    return;
  }
  // An image that fills the inside is cut when it moves, not the edge.
  const zRect inner = innerRect();
  const zDimension part{std::min(size.width, inner.right - imageX),
                        std::min(size.height, inner.bottom - imageY)};
  display.drawBitmap(shown->pixmap(), zRect(zPoint{imageIndex() * size.width, 0}, part),
                     {imageX, imageY});
}

int ziVisBmpButtonInternal::imageIndex() const {
  if (visualState() == kVisualDisabled) {
    return (images() & kBmpImageUpDisabled) != 0 ? frameCount - 1 : 0;
  }
  return isPressed() && (images() & kBmpImageUpDown) != 0 ? 1 : 0;
}

const zBitmap* ziVisBmpButtonInternal::grayImage() {
  if (grayBitmap == nullptr && bitmap != nullptr) {
    grayBitmap = makeGrayImage(*bitmap);
  }
  return grayBitmap.get();
}
