#include "framework/controls/combo_box_callbacks_xm.h"

#include <utility>

#include "framework/controls/combo_box.h"
#include "framework/controls/text_widget_xm.h"
#include "framework/core/connect_xm.h"

namespace {

// The program's dispatcher of button presses goes through pressDispatched while a list is down.
ziComboCallbacks* watching = nullptr;
XtEventDispatchProc usualDispatcher = nullptr;

// Whether the focus change that is being handled comes from a grab or its end. The event that the
// entry gets is made by Xt and doesn't tell.
bool isByGrab(Display* display) {
  const XEvent* cause = XtLastEventProcessed(display);
  return cause != nullptr && (cause->type == FocusIn || cause->type == FocusOut) &&
         (cause->xfocus.mode == NotifyGrab || cause->xfocus.mode == NotifyUngrab);
}

bool isInside(Widget widget, Widget outer) {
  while (widget != nullptr && widget != outer) {
    widget = XtParent(widget);
  }
  return widget != nullptr;
}

Widget enclosingShell(Widget widget) {
  while (XtIsShell(widget) == False) {
    widget = XtParent(widget);
  }
  return widget;
}

}  // namespace

template <auto Member>
void ziComboCallbacks::tieEvents(Widget widget, EventMask mask, XtListPosition position) {
  XtInsertEventHandler(widget, mask, False, &ziEventTrampoline<Member, ziComboCallbacks>, this,
                       position);
}

template <auto Member>
void ziComboCallbacks::untieEvents(Widget widget, EventMask mask) {
  XtRemoveEventHandler(widget, mask, False, &ziEventTrampoline<Member, ziComboCallbacks>, this);
}

ziComboCallbacks::ziComboCallbacks(zComboBoxBase& owner) : combo(owner) {
  Widget entry = combo.widget();
  connect<&ziComboCallbacks::entryChanging>(entry, callback::modifyVerify, this);
  connect<&ziComboCallbacks::entryChanged>(entry, callback::textChanged, this);
  connect<&ziComboCallbacks::rowChosen>(combo.listWidget, callback::browseSelection, this);
  connect<&ziComboCallbacks::rowActivated>(combo.listWidget, callback::defaultAction, this);
  if (combo.arrow != nullptr) {
    connect<&ziComboCallbacks::arrowActivated>(combo.arrow, callback::arrowActivate, this);
  }
  tieEvents<&ziComboCallbacks::focusChanged>(entry, FocusChangeMask, XtListHead);
  if (combo.entryKind == zComboBoxBase::Entry::fixed) {
    // Behind the control's own procedure, which offers the press to handlers.
    tieEvents<&ziComboCallbacks::entryPressed>(entry, ButtonPressMask, XtListTail);
  }
}

ziComboCallbacks::~ziComboCallbacks() {
  stopWatching();
  Widget entry = combo.widget();
  disconnect<&ziComboCallbacks::entryChanging>(entry, callback::modifyVerify, this);
  disconnect<&ziComboCallbacks::entryChanged>(entry, callback::textChanged, this);
  disconnect<&ziComboCallbacks::rowChosen>(combo.listWidget, callback::browseSelection, this);
  disconnect<&ziComboCallbacks::rowActivated>(combo.listWidget, callback::defaultAction, this);
  if (combo.arrow != nullptr) {
    disconnect<&ziComboCallbacks::arrowActivated>(combo.arrow, callback::arrowActivate, this);
  }
  untieEvents<&ziComboCallbacks::focusChanged>(entry, FocusChangeMask);
  untieEvents<&ziComboCallbacks::entryPressed>(entry, ButtonPressMask);
}

void ziComboCallbacks::arrowActivated(XmArrowButtonCallbackStruct* /*data*/) {
  const ziAlive alive(&combo);
  XmProcessTraversal(combo.widget(), XmTRAVERSE_CURRENT);
  if (alive) {
    combo.toggleDropDown();
  }
}

void ziComboCallbacks::rowChosen(XmListCallbackStruct* data) {
  zComboBoxBase& chosen = combo;
  const ziAlive alive(&chosen);
  XEvent* const event = data->event;
  chosen.setCurSel(data->item_position - 1);
  // The list goes first: what the notification starts may stay for long.
  chosen.hideDropDown();
  if (alive) {
    chosen.notifyParent(kComboSelectionChanged, event);
  }
}

void ziComboCallbacks::rowActivated(XmListCallbackStruct* data) {
  zComboBoxBase& chosen = combo;
  const ziAlive alive(&chosen);
  XEvent* const event = data->event;
  if (chosen.curSel() != data->item_position - 1) {
    // Two quick clicks on two rows: the widget reports no selection of the second.
    rowChosen(data);
  }
  if (alive) {
    chosen.hideDropDown();
  }
  if (alive) {
    chosen.notifyParent(kComboDoubleClick, event);
  }
}

void ziComboCallbacks::entryChanging(XmTextVerifyCallbackStruct* data) {
  if (combo.settingEntry) {
    return;
  }
  if (isStrayKey(*data)) {
    data->doit = False;
    return;
  }
  const std::string before = combo.text().str().substr(0, static_cast<std::size_t>(data->startPos));
  replaceInserted(*data, combo.entryForm(insertedText(*data), before));
  const ziAlive alive(&combo);
  combo.notifyParent(kComboEditUpdate, data->event);
  if (!alive) {
    data->doit = False;
  }
}

void ziComboCallbacks::entryChanged(XmAnyCallbackStruct* data) {
  if (!combo.settingEntry) {
    combo.entryEdited(data->event);
  }
}

void ziComboCallbacks::focusChanged(Widget /*entry*/, XEvent* event, Boolean* toWidget) {
  if (inListClick && isByGrab(event->xany.display)) {
    // The scroll bar of the list grabs the keyboard while it is being used.
    return;
  }
  zComboBoxBase& changed = combo;
  const ziAlive alive(&changed);
  if (event->type == FocusOut) {
    changed.hideDropDown();
  }
  if (alive) {
    changed.notifyParent(event->type == FocusIn ? kComboFocusIn : kComboFocusOut, event);
  }
  if (!alive) {
    *toWidget = False;
  }
}

void ziComboCallbacks::entryPressed(Widget /*entry*/, XEvent* event, Boolean* toWidget) {
  if (event->xbutton.button == Button1) {
    // The entry can't be edited, so there is nothing to point at in it.
    *toWidget = False;
    combo.toggleDropDown();
  }
}

void ziComboCallbacks::frameChanged(Widget frame, XEvent* event, Boolean* toWidget) {
  if (event->xany.window != XtWindow(frame) ||
      (event->type != ConfigureNotify && event->type != UnmapNotify)) {
    return;
  }
  const ziAlive alive(&combo);
  combo.hideDropDown();
  if (!alive) {
    *toWidget = False;
  }
}

void ziComboCallbacks::watchOutside() {
  if (watching != nullptr) {
    watching->stopWatching();
  }
  watching = this;
  inListClick = false;
  usualDispatcher = XtSetEventDispatcher(XtDisplay(combo.holder()), ButtonPress, pressDispatched);
  watchedFrame = enclosingShell(combo.holder());
  tieEvents<&ziComboCallbacks::frameChanged>(watchedFrame, StructureNotifyMask, XtListTail);
}

void ziComboCallbacks::stopWatching() {
  if (watching != this) {
    return;
  }
  watching = nullptr;
  XtSetEventDispatcher(XtDisplay(combo.holder()), ButtonPress, usualDispatcher);
  untieEvents<&ziComboCallbacks::frameChanged>(std::exchange(watchedFrame, nullptr),
                                               StructureNotifyMask);
}

Boolean ziComboCallbacks::pressDispatched(XEvent* event) {
  const XtEventDispatchProc dispatch = usualDispatcher;
  Widget pressed = XtWindowToWidget(event->xany.display, event->xany.window);
  if (watching != nullptr) {
    watching->inListClick = isInside(pressed, watching->combo.shell);
    if (!watching->inListClick && !isInside(pressed, watching->combo.holder())) {
      watching->combo.hideDropDown();
    }
  }
  // The press does its usual work as well.
  return dispatch(event);
}
