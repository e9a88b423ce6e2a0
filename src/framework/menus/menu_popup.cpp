// Popup menus and their loop. Anything may happen in the loop: the menu or its owner may be
// destroyed, the menu may be shown again by one of its own handlers, or another popup may be shown.

#include <memory>
#include <string>

#include "framework/core/application.h"
#include "framework/core/window.h"
#include "framework/menus/menu.h"
#include "framework/menus/menu_widgets_xm.h"

#include <Xm/LabelGP.h>

namespace {

// Of the event that the toolkit is told of as the cause.
constexpr unsigned kCauseButton = 2;

zPopupMenu* activePopup = nullptr;

}  // namespace

zPopupMenu::zPopupMenu(const zPoint& position, zWindow* owner)
    : zMenu(owner, kPopup), place(position) {
  markClass(kClassPopupMenu);
  auto item = std::make_shared<ziMenuItem>(kNoItemId, "", 0U);
  item->subItems = std::make_shared<ziMenuItemDList>(this);
  topItems().insert(0, std::move(item));
}

zPopupMenu::~zPopupMenu() {
  if (activePopup == this) {
    activePopup = nullptr;
  }
  destroyRoot();
}

zPopupMenu* zPopupMenu::active() {
  return activePopup;
}

int zPopupMenu::popup(const zPoint& newPosition, int button) {
  if (owner() == nullptr || owner()->widget() == nullptr || !XtIsRealized(owner()->widget())) {
    return 0;
  }
  place = newPosition;
  activePopup = this;
  popupState = kPosted;
  // What an outer loop of this or of another popup left behind.
  destroyRoot();
  setRoot(buildPopupRoot(root(), owner()->widget()));
  post(button);
  const std::weak_ptr<const void> alive = life();
  const ziAlive ownerAlive(owner());
  zApp::instance()->pumpWhile([&] {
    return !alive.expired() && ownerAlive && activePopup == this && popupState == kPosted;
  });
  if (!alive.expired() && activePopup == this) {
    destroyRoot();
    popupState = kIdle;
  }
  return 1;
}

void zPopupMenu::post(int button) {
  const std::string trigger = "<Btn" + std::to_string(button) + "Down>";
  XtVaSetValues(widget(), XmNmenuPost, trigger.c_str(), nullptr);
  zRect where(place, zDimension{});
  owner()->mapRectToWindow(nullptr, where);
  XEvent cause = {};
  cause.xbutton.type = ButtonPress;
  cause.xbutton.button = kCauseButton;
  cause.xbutton.same_screen = True;
  cause.xbutton.display = XtDisplay(widget());
  cause.xbutton.x_root = where.left;
  cause.xbutton.y_root = where.top;
  XmMenuPosition(widget(), &cause.xbutton);
  XtManageChild(widget());
  takeKeyboard();
}

// As after a click on an entry of a menu bar. Otherwise the toolkit waits for the button that the
// menu came up with to be dragged over the items, and it listens to no arrows meanwhile.
void zPopupMenu::takeKeyboard() {
  for (const std::shared_ptr<ziMenuItem>& item : lines()) {
    if (item->widget != nullptr && XmProcessTraversal(item->widget, XmTRAVERSE_CURRENT) != False) {
      break;
    }
  }
  const XmMenuProc inMenu = xmLabelGadgetClassRec.label_class.menuProcs;
  if (inMenu != nullptr) {
    inMenu(XmMENU_TRAVERSAL, widget(), True);
  }
}

void zPopupMenu::unmapped(Widget pulldown) {
  if (widget() == pulldown) {
    popupState = kFinished;
  }
}
