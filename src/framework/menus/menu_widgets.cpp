// The Motif side of menus.
//
// All plain items are toggle gadgets, checkable or not, so that a check mark needs no rebuilding.
// A place among the gadgets is that of the next item that is built: gadgets that wait for their
// destruction still count for the toolkit.

#include "framework/menus/menu_widgets_xm.h"

#include <algorithm>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/connect_xm.h"
#include "framework/core/show_together.h"
#include "framework/core/xm_handles_xm.h"

namespace {

constexpr Dimension kShellStartSize = 10;
constexpr Dimension kItemMargin = 6;  // left and right of an item's texts
constexpr zEventKinds kFirstForKeys{KeyPressMask | KeyReleaseMask, false, XtListHead};

struct GadgetCallback {
  const char* resource;
  XtCallbackProc procedure;
};
constexpr GadgetCallback kToggleCallbacks[] = {{XmNvalueChangedCallback, zMenuCommandProc},
                                               {XmNarmCallback, zMenuArmProc}};
constexpr GadgetCallback kCascadeCallbacks[] = {{XmNactivateCallback, zMenuCommandProc}};
constexpr GadgetCallback kPulldownCallbacks[] = {{XmNmapCallback, zMenuMapProc},
                                                 {XmNunmapCallback, zMenuMapProc}};

template <class Callbacks>
void addCallbacks(Widget widget, const Callbacks& callbacks, ziMenuItem& item) {
  for (const GadgetCallback& callback : callbacks) {
    XtAddCallback(widget, const_cast<char*>(callback.resource), callback.procedure, &item);
  }
}

template <class Callbacks>
void removeCallbacks(Widget widget, const Callbacks& callbacks, ziMenuItem& item) {
  for (const GadgetCallback& callback : callbacks) {
    XtRemoveCallback(widget, const_cast<char*>(callback.resource), callback.procedure, &item);
  }
}

unsigned char rowColumnType(Widget widget) {
  unsigned char type = XmWORK_AREA;
  if (XmIsRowColumn(widget)) {
    XtVaGetValues(widget, XmNrowColumnType, &type, nullptr);
  }
  return type;
}

// The place before the next item that has a gadget.
short gadgetPosition(const ziMenuItemDList& list, int index) {
  for (int next = index + 1; next < list.size(); ++next) {
    if (const ziMenuItem& item = *list.at(next); item.widget != nullptr) {
      short position = XmLAST_POSITION;
      XtVaGetValues(item.widget, XmNpositionIndex, &position, nullptr);
      return position;
    }
  }
  return XmLAST_POSITION;
}

Widget makeNestedPulldown(Widget parent) {
  Arg args[] = {{const_cast<char*>(XmNwidth), kShellStartSize},
                {const_cast<char*>(XmNheight), kShellStartSize},
                {const_cast<char*>(XmNallowShellResize), True}};
  Widget shell = XmCreateMenuShell(parent, const_cast<char*>("PulldownMenu"), args, XtNumber(args));
  Arg type[] = {{const_cast<char*>(XmNrowColumnType), XmMENU_PULLDOWN}};
  return XmCreateRowColumn(shell, const_cast<char*>("ZAPP_XMPULLDOWN"), type, XtNumber(type));
}

Widget makePulldown(Widget container) {
  if (rowColumnType(container) == XmMENU_BAR) {
    return XmCreatePulldownMenu(container, const_cast<char*>("PulldownMenu"), nullptr, 0);
  }
  return makeNestedPulldown(container);
}

void makeItem(ziMenuItem& item, Widget container, short position);

// They come up together: one at a time each would lay out all before it anew.
void buildLines(ziMenuItem& item) {
  addCallbacks(item.subMenuWidget, kPulldownCallbacks, item);
  std::vector<Widget> gadgets;
  for (const std::shared_ptr<ziMenuItem>& line : *item.subItems) {
    makeItem(*line, item.subMenuWidget, XmLAST_POSITION);
    gadgets.push_back(line->widget);
  }
  XtManageChildren(gadgets.data(), static_cast<Cardinal>(gadgets.size()));
}

void buildCascade(ziMenuItem& item, Widget container, short position) {
  if (item.isSubMenu()) {
    item.subMenuWidget = makePulldown(container);
  }
  item.widget =
      XtVaCreateWidget("CascadeButtonGadget", xmCascadeButtonGadgetClass, container, XmNsubMenuId,
                       item.subMenuWidget, XmNpositionIndex, position, nullptr);
  if (rowColumnType(container) != XmMENU_BAR) {
    XtVaSetValues(item.widget, XmNmarginWidth, kItemMargin, nullptr);
  }
  if (item.isSubMenu()) {
    buildLines(item);
  } else {
    addCallbacks(item.widget, kCascadeCallbacks, item);
  }
}

// Leaves the gadget unmanaged.
void makeItem(ziMenuItem& item, Widget container, short position) {
  item.parseText();
  if (item.isSeparator()) {
    item.widget = XtVaCreateWidget(item.text.c_str(), xmSeparatorGadgetClass, container,
                                   XmNpositionIndex, position, nullptr);
    return;
  }
  if (item.isSubMenu() || rowColumnType(container) == XmMENU_BAR) {
    buildCascade(item, container, position);
  } else {
    item.widget =
        XtVaCreateWidget(item.text.c_str(), xmToggleButtonGadgetClass, container, XmNpositionIndex,
                         position, XmNmarginWidth, kItemMargin, nullptr);
    addCallbacks(item.widget, kToggleCallbacks, item);
    showMenuItemCheck(item, item.isChecked());
  }
  showMenuItemText(item);
  showMenuItemSensitivity(item);
}

// The first help item of a bar goes to its end.
void markHelp(const ziMenuItem& item, Widget bar) {
  Widget marked = nullptr;
  XtVaGetValues(bar, XmNmenuHelpWidget, &marked, nullptr);
  if (marked == nullptr) {
    XtVaSetValues(bar, XmNmenuHelpWidget, item.widget, nullptr);
  }
}

void unmarkHelp(const ziMenuItem& item) {
  Widget bar = XtParent(item.widget);
  Widget marked = nullptr;
  XtVaGetValues(bar, XmNmenuHelpWidget, &marked, nullptr);
  if (marked == item.widget) {
    XtVaSetValues(bar, XmNmenuHelpWidget, nullptr, nullptr);
  }
}

// Takes an open pulldown off the screen, and its whole menu system with it: destroyed alone it
// would leave the grabs and the focus to nobody.
void closePulldown(Widget pulldown) {
  Display* display = XtDisplay(pulldown);
  XEvent cause = {};
  cause.xbutton.type = ButtonPress;
  // The toolkit ignores an event that looks like the last one.
  cause.xbutton.serial = LastKnownRequestProcessed(display);
  cause.xbutton.display = display;
  cause.xbutton.window = XtWindow(pulldown);
  cause.xbutton.time = XtLastTimestampProcessed(display);
  XtCallActionProc(XtParent(pulldown), "MenuShellPopdownDone", &cause, nullptr, 0);
}

// The innermost pulldown of `list` that is on the screen; null when none is.
Widget openPulldown(const ziMenuItemDList& list) {
  const auto open =
      std::find_if(list.begin(), list.end(), [](const auto& item) { return item->isOpen(); });
  if (open == list.end()) {
    return nullptr;
  }
  Widget inner = openPulldown(*(*open)->subItems);
  return inner != nullptr ? inner : (*open)->subMenuWidget;
}

// A key that comes before a pulldown has got the focus is handed to the bar, which would take it
// for the mnemonic of another entry. Keys with Alt are such mnemonics, also while a menu is open.
// Handlers of what is chosen may destroy the menu.
bool giveKeyToPulldown(ziMenuItemDList& list, XEvent& key) {
  Widget at = XtWindowToWidget(key.xkey.display, key.xkey.window);
  Widget pulldown = openPulldown(list);
  if (pulldown == nullptr || (key.xkey.state & zApp::instance()->altMask()) != 0 ||
      (at != nullptr && XmIsMenuShell(at))) {
    return false;
  }
  XtDispatchEventToWidget(pulldown, &key);
  return true;
}

void forgetItem(ziMenuItem& item) {
  if (item.isSubMenu()) {
    forgetMenuWidgets(*item.subItems);
  }
  if (item.subMenuWidget != nullptr) {
    removeCallbacks(item.subMenuWidget, kPulldownCallbacks, item);
    item.subMenuWidget = nullptr;
    item.posted.reset();
  }
  if (item.widget == nullptr) {
    return;
  }
  if (XmIsToggleButtonGadget(item.widget)) {
    removeCallbacks(item.widget, kToggleCallbacks, item);
  } else if (XmIsCascadeButtonGadget(item.widget) && !item.isSubMenu()) {
    removeCallbacks(item.widget, kCascadeCallbacks, item);
  }
  item.widget = nullptr;
}

}  // namespace

Widget makeMenuBar(Widget over, ziMenuItemDList& list) {
  Widget bar = XmCreateMenuBar(over, const_cast<char*>("MenuBar"), nullptr, 0);
  connect<&giveKeyToPulldown>(bar, kFirstForKeys, &list);
  return bar;
}

Widget buildPopupRoot(ziMenuItem& root, Widget owner) {
  root.subMenuWidget = XmCreatePopupMenu(owner, const_cast<char*>("PopupMenu"), nullptr, 0);
  buildLines(root);
  return root.subMenuWidget;
}

void buildMenuItem(ziMenuItemDList& list, int index, Widget container) {
  ziMenuItem& item = *list.at(index);
  makeItem(item, container, gadgetPosition(list, index));
  manageWidget(item.widget, true);
  if ((item.flags & kItemHelp) != 0 && rowColumnType(container) == XmMENU_BAR) {
    markHelp(item, container);
  }
}

void destroyMenuItem(ziMenuItem& item) {
  Widget gadget = item.widget;
  Widget pulldown = item.subMenuWidget;
  const bool isOpen = item.isOpen();
  const bool isInBar = gadget != nullptr && rowColumnType(XtParent(gadget)) == XmMENU_BAR;
  if (isInBar) {
    unmarkHelp(item);
  }
  forgetItem(item);
  if (isOpen) {
    closePulldown(pulldown);
  }
  if (gadget != nullptr) {
    XtUnmanageChild(gadget);
    XtDestroyWidget(gadget);
  }
  if (pulldown != nullptr) {
    // The pulldowns of a bar share one shell; each of the others has its own.
    XtDestroyWidget(isInBar ? pulldown : XtParent(pulldown));
  }
}

void forgetMenuWidgets(ziMenuItemDList& list) {
  for (const std::shared_ptr<ziMenuItem>& item : list) {
    forgetItem(*item);
  }
}

void destroyMenuRoot(Widget root, ziMenuItemDList& list) {
  std::vector<Widget> open;
  for (const std::shared_ptr<ziMenuItem>& item : list) {
    if (item->isOpen()) {
      open.push_back(item->subMenuWidget);
    }
  }
  forgetMenuWidgets(list);
  disconnect<&giveKeyToPulldown>(root, kFirstForKeys, &list);
  std::for_each(open.begin(), open.end(), closePulldown);
  XtUnmanageChild(root);
  XtDestroyWidget(root);
}

void showMenuItemSensitivity(const ziMenuItem& item) {
  if (item.widget != nullptr) {
    XtSetSensitive(item.widget, item.isGreyed() ? False : True);
  }
}

void showMenuItemCheck(const ziMenuItem& item, bool checked) {
  if (item.widget != nullptr && XmIsToggleButtonGadget(item.widget)) {
    XmToggleButtonGadgetSetState(item.widget, checked ? True : False, False);
  }
}

void showMenuItemText(ziMenuItem& item) {
  item.parseText();
  const ziMenuLabel parts = splitMenuText(item.text.view());
  const zXmString label(parts.label.c_str());
  XtVaSetValues(item.widget, XmNlabelString, label.get(), XmNmnemonic,
                KeySym{static_cast<unsigned char>(item.mnemonic)}, nullptr);
  if (!XmIsCascadeButtonGadget(item.widget)) {
    // An empty string would take up room.
    const zXmString accelerator =
        parts.accelerator.empty() ? zXmString() : zXmString(parts.accelerator.c_str());
    XtVaSetValues(item.widget, XmNacceleratorText, accelerator.get(), nullptr);
  }
  if ((item.flags & kItemBitmap) != 0 && item.bitmap != None) {
    XtVaSetValues(item.widget, XmNlabelType, XmPIXMAP, XmNlabelPixmap, item.bitmap, nullptr);
  }
}
