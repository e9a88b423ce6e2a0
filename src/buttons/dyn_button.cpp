#include "buttons/dyn_button.h"

#include "button_file/button_set_document.h"
#include "buttons/button_host.h"
#include "framework/controls/control.h"
#include "support/text.h"
#include "textarea/command_queue.h"
#include "textarea/my_pane.h"
#include "textarea/text_pane.h"

namespace {

constexpr std::uint32_t kButtonStyle = kStyleTabStop;
constexpr unsigned kPressingButton = 1;
constexpr unsigned long kWatchPeriod = 50;  // milliseconds

}  // namespace

DynButton::DynButton(zWindow* parent, zSizer* sizer, int id, const Button& shown,
                     ButtonSetDocument& set, ziButtonHost& mainWindow)
    : zPushButton(parent, sizer, kButtonStyle, withoutMnemonics(shown.label).c_str(), id),
      command(shown),
      document(set),
      host(mainWindow) {
  takeBackgroundOf(*parent);
  keepFocusOnClick();
  setNotify(this, toHandler(&DynButton::onActivated), kNotifyClicked);
}

// The set may be replaced while the mouse holds a button of it down.
DynButton::~DynButton() {
  if (armed != 0) {
    endPress();
    host.showStatus("");
  }
}

int DynButton::mouseButtonDown(zEvent* event) {
  if (pointerOf(*event).button == kPressingButton) {
    host.showStatus("Execute Command: " + command.definition);
    theCommandLine->startFocusTimer();
    armed = 1;
    // A release elsewhere in the program is this button's, too.
    grabPointer(*this);
    pressWatch = std::make_unique<zTimer>(this, &DynButton::watchPress, kWatchPeriod);
  }
  return 0;
}

// While a dialog is up the release goes to it and not to this button.
int DynButton::watchPress(zEvH* button) {
  auto& pressed = *static_cast<DynButton*>(button);
  if (isReleaseLost(pressed)) {
    pressed.endPress();
    pressed.comeUp();
    pressed.host.showStatus("");
  }
  return 0;
}

void DynButton::endPress() {
  armed = 0;
  pressWatch.reset();
  releasePointer(*this);
}

int DynButton::mouseButtonUp(zEvent* event) {
  const zPointer pointer = pointerOf(*event);
  if (pointer.button != kPressingButton) {
    return 0;
  }
  ziButtonHost& mainWindow = host;
  if (armed != 0) {
    endPress();
    const zDimension size = sizer()->size();
    // The left and the top edge are outside. Intended.
    if (pointer.pos.x > 0 && pointer.pos.y > 0 && pointer.pos.x < size.width &&
        pointer.pos.y < size.height) {
      execute();
    }
    theTextPane->invalidate(nullptr, 1);
    mainWindow.showStatus("");
  }
  theCommandLine->startFocusTimer();
  return 0;
}

// The mouse's presses have been dealt with by then.
int DynButton::onActivated(zEvent* event) {
  if (pointerOf(*event).button == 0) {
    execute();
    theTextPane->invalidate(nullptr, 1);
    theCommandLine->startFocusTimer();
  }
  return 1;
}

// This button may be gone afterwards.
void DynButton::execute() {
  // An empty definition becomes what it stands for, also in the button set. Intended.
  if (command.definition.empty()) {
    document.define(command, kEmptyLineCommand);
  }
  host.executeCommandLine(command.definition);
}
