#include "framework/core/modal_shell.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/connect_xm.h"
#include "framework/core/desktop_properties.h"
#include "framework/core/frame.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/x_settings.h"

#include <X11/Xatom.h>
#include <Xm/XmAll.h>

namespace {

std::vector<ziModalShell*> shellsUp;  ///< the newest last

Widget mainShell() {
  const zFrameWin* frame = zApp::instance()->mainWindow();
  return frame == nullptr ? nullptr : frame->shell();
}

// By the window manager's rules a client leaves the state of an icon by mapping its window.
bool bringBack(Widget shell) {
  if (shell == nullptr || !isIconic(shell)) {
    return false;
  }
  XMapWindow(XtDisplay(shell), XtWindow(shell));
  return true;
}

}  // namespace

void ziModalShell::focusChanged(XEvent& event) {
  if (event.type == FocusIn && std::exchange(isCalling, false) && mainShell() != nullptr) {
    demandAttention(mainShell(), false);
  }
}

void ziModalShell::up(Widget newShell) {
  down();
  shell = newShell;
  shellsUp.push_back(this);
  connect<&ziModalShell::focusChanged>(shell, zEventKinds{FocusChangeMask}, this);
  connect<&ziModalShell::down>(shell, callback::destroy, this);
  if (zUnaskedScope::isActive()) {
    keyGuard.start(shell);
    callUser();
  }
}

void ziModalShell::callUser() {
  if (bringBack(mainShell())) {
    isCalling = true;
    demandAttention(mainShell(), true);
  }
}

void ziModalShell::down() {
  if (shell == nullptr) {
    return;
  }
  keyGuard.stop();
  if (std::exchange(isCalling, false) && mainShell() != nullptr) {
    demandAttention(mainShell(), false);
  }
  disconnect<&ziModalShell::focusChanged>(shell, zEventKinds{FocusChangeMask}, this);
  disconnect<&ziModalShell::down>(shell, callback::destroy, this);
  std::erase(shellsUp, this);
  shell = nullptr;
}

void ziModalShell::raise() const {
  if (shell == nullptr || !XtIsRealized(shell)) {
    return;
  }
  bringBack(mainShell());
  Display* display = XtDisplay(shell);
  XMapRaised(display, XtWindow(shell));
  XWindowAttributes attributes;
  if (XGetWindowAttributes(display, XtWindow(shell), &attributes) != 0 &&
      attributes.map_state == IsViewable) {
    XSetInputFocus(display, XtWindow(shell), RevertToParent, XtLastTimestampProcessed(display));
  }
}

void ziModalShell::raiseNewest() {
  if (!shellsUp.empty()) {
    shellsUp.back()->raise();
  }
}

void ziModalBox::take(Widget made, const char* title) {
  box = made;
  announceWindow(XtParent(box), ziWindowType::dialog, title);
  connect<&ziModalBox::onOk>(box, callback::ok, this);
  connect<&ziModalBox::onCancel>(box, callback::cancel, this);
  connect<&ziModalBox::onHelp>(box, callback::help, this);
  connect<&ziModalBox::destroyed>(box, callback::destroy, this);
  connect<&ziModalBox::onClose>(XtParent(box), kCloseRequest, this);
}

void ziModalBox::show() {
  modalShell.up(XtParent(box));
  XtManageChild(box);
  XtPopup(XtParent(box), XtGrabNone);
}

void ziModalBox::destroyed() {
  box = nullptr;
  onGone();
}

ziModalBox::~ziModalBox() {
  if (box == nullptr) {
    return;
  }
  // Inside a callback the widgets are only marked and live on, with late events under way to them.
  disconnect<&ziModalBox::onOk>(box, callback::ok, this);
  disconnect<&ziModalBox::onCancel>(box, callback::cancel, this);
  disconnect<&ziModalBox::onHelp>(box, callback::help, this);
  disconnect<&ziModalBox::destroyed>(box, callback::destroy, this);
  disconnect<&ziModalBox::onClose>(XtParent(box), kCloseRequest, this);
  modalShell.down();
  XtUnmanageChild(box);
  XtDestroyWidget(box);
}

Widget shellAbove(zWindow* parent) {
  if (parent == nullptr || parent->widget() == nullptr) {
    parent = zApp::instance()->mainWindow();
  }
  Widget widget = parent == nullptr ? nullptr : parent->widget();
  while (widget != nullptr && !XtIsShell(widget)) {
    widget = XtParent(widget);
  }
  return widget;
}

// The time of a key is told by its event, that of the focus by none. So the focus is followed by a
// change of a property of the shell, whose event has the time: keys that the server put in front of
// it were typed before it, also when the program was too busy to handle any of them.

namespace {

constexpr zEventKinds kGuardedEvents{FocusChangeMask | PropertyChangeMask};

int unaskedDepth = 0;
// Of the dialogs on the screen; the newest, the last, has the say.
std::vector<ziKeyGuard*> guards;
XtEventDispatchProc usualDispatcher = nullptr;

void installDispatcher(Display* display, XtEventDispatchProc dispatcher) {
  const XtEventDispatchProc before = XtSetEventDispatcher(display, KeyPress, dispatcher);
  if (before != dispatcher) {
    usualDispatcher = before;
  }
}

Atom focusTimeAtom(Widget shell) {
  return XInternAtom(XtDisplay(shell), "NEL_FOCUS_TIME", False);
}

// The text that keys go to at present or, if they go to another program, that they would go to in
// the main window.
Widget textWithFocus(Display* display) {
  Window window = None;
  int revert = 0;
  XGetInputFocus(display, &window, &revert);
  Widget near = window > PointerRoot ? XtWindowToWidget(display, window) : nullptr;
  const zFrameWin* main = zApp::instance()->mainWindow();
  if (near == nullptr && main != nullptr) {
    near = main->shell();
  }
  Widget focus = near == nullptr ? nullptr : XmGetFocusWidget(near);
  return focus != nullptr && (XmIsText(focus) || XmIsTextField(focus)) ? focus : nullptr;
}

bool isEditing(XKeyEvent key) {
  const zKeyLookup lookup = lookUpKey(key);
  return isPlainTyping(lookup, key.state) || lookup.keysym == XK_BackSpace;
}

bool isReturn(XKeyEvent key) {
  const unsigned long keysym = lookUpKey(key).keysym;
  return keysym == XK_Return || keysym == XK_KP_Enter;
}

bool isInMainWindow(Widget text) {
  while (XtIsShell(text) == False) {
    text = XtParent(text);
  }
  const zFrameWin* main = zApp::instance()->mainWindow();
  return main != nullptr && text == main->shell();
}

}  // namespace

char ziKeyGuard::dispatchKey(XEvent* event) noexcept {
  // Of dialogs that came up one right after the other, none of which the user can have seen, the
  // first knows where he was typing.
  const ziKeyGuard* holder = nullptr;
  for (auto guard = guards.rbegin(); guard != guards.rend() && (*guard)->holds(*event); ++guard) {
    holder = *guard;
  }
  if (holder == nullptr) {
    return usualDispatcher(event);
  }
  holder->handOn(*event);
  return True;
}

void ziKeyGuard::shellEvent(XEvent& event) {
  if (hasFocus) {
    return;
  }
  if (event.type == FocusIn && !isGrabFocusEvent(event)) {
    XChangeProperty(XtDisplay(watched), XtWindow(watched), focusTimeAtom(watched), XA_INTEGER, 32,
                    PropModeReplace, nullptr, 0);
  } else if (event.type == PropertyNotify && event.xproperty.atom == focusTimeAtom(watched)) {
    hasFocus = true;
    focusTime = event.xproperty.time;
  }
}

zUnaskedScope::zUnaskedScope() {
  ++unaskedDepth;
}

zUnaskedScope::~zUnaskedScope() {
  --unaskedDepth;
}

bool zUnaskedScope::isActive() {
  return unaskedDepth > 0;
}

void ziKeyGuard::start(Widget shell) {
  stop();
  if (g_XSettings.promptKeyDelay <= 0) {
    return;
  }
  watched = shell;
  hasFocus = false;
  isOpen = false;
  typedInto = textWithFocus(XtDisplay(shell));
  if (typedInto != nullptr) {
    connect<&ziKeyGuard::textGone>(typedInto, callback::destroy, this);
  }
  connect<&ziKeyGuard::shellEvent>(shell, kGuardedEvents, this);
  installDispatcher(XtDisplay(shell), dispatchKey);
  guards.push_back(this);
}

void ziKeyGuard::stop() {
  if (watched == nullptr) {
    return;
  }
  std::erase(guards, this);
  disconnect<&ziKeyGuard::shellEvent>(watched, kGuardedEvents, this);
  if (typedInto != nullptr) {
    disconnect<&ziKeyGuard::textGone>(typedInto, callback::destroy, this);
  }
  watched = nullptr;
  typedInto = nullptr;
}

bool ziKeyGuard::holds(const XEvent& key) {
  // A menu that is open is the user's, and the dialog gets no focus before its end.
  if (isOpen || zApp::instance()->isMenuPosted()) {
    return false;
  }
  // The server's clock has 32 bits and starts again.
  const auto since = static_cast<std::int32_t>(key.xkey.time - focusTime);
  isOpen = hasFocus && since >= g_XSettings.promptKeyDelay;
  return !isOpen;
}

void ziKeyGuard::handOn(const XEvent& key) const {
  if (typedInto == nullptr ||
      !(isEditing(key.xkey) || (isReturn(key.xkey) && isInMainWindow(typedInto)))) {
    return;
  }
  // Past the modal grab, which keeps the text from everything else.
  XEvent copy = key;
  copy.xkey.window = XtWindow(typedInto);
  XtDispatchEventToWidget(typedInto, &copy);
}
