#include "framework/visuals/visual_button.h"

#include "framework/core/window.h"
#include "framework/draw/display.h"
#include "framework/visuals/visual_compound.h"

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

void ziVisButton::drawIdle(zDisplay& /*display*/) {
  state = kVisualIdle;
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
