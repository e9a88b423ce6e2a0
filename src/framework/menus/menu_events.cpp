// The road of a menu's events: callbacks of gadgets become messages and are offered to menus and
// to the owner. Any handler may remove the item, destroy menus or the owner, so nothing is touched
// after a call without asking whether it is still there.

#include "framework/menus/menu_widgets_xm.h"

#include <memory>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/window.h"
#include "framework/menus/menu.h"

namespace {

/// The menus that hear of an item, from its own upwards, and the owner of the last.
class MenuRoad {
 public:
  explicit MenuRoad(zMenu* first) : ownerWindow(ownerAbove(first)), ownerAlive(ownerWindow) {
    for (zMenu* menu = first; menu != nullptr; menu = menu->parentMenu()) {
      stations.push_back({menu, menu->life()});
    }
  }

  /// A message of the menu; `lparam` is the owner unless that has gone.
  zEvent event(int message, int id, const XmAnyCallbackStruct& cause) const {
    zEvent event = zEvent::of(message, id, owner());
    event.xevent = cause.event;
    event.lparam = reinterpret_cast<std::intptr_t>(owner());
    return event;
  }

  static zEvent closedEvent(XEvent* cause) {
    zEvent event = zEvent::of(kMsgMenuSelect);
    event.xevent = cause;
    event.lparam = kMenuClosed;
    return event;
  }

  /// Offers the event to the active popup and to the menus; 1 if one took it, or if the menu that
  /// it came from was destroyed.
  int offerToMenus(zEvent& event) const {
    zMenu* popup = zPopupMenu::active();
    if (popup != nullptr && popup->dispatch(&event) != 0) {
      return 1;
    }
    for (const Station& station : stations) {
      // The popup's own items have it on their road; it is asked once.
      if (!station.alive.expired() && station.menu != popup &&
          station.menu->dispatch(&event) != 0) {
        return 1;
      }
    }
    return isClosed() ? 1 : 0;
  }

  /// The same, and then to the owner.
  int offer(zEvent& event) const {
    if (offerToMenus(event) != 0) {
      return 1;
    }
    return owner() == nullptr ? 0 : zDispatch(event, owner());
  }

 private:
  struct Station {
    zMenu* menu;
    std::weak_ptr<const void> alive;
  };

  static zWindow* ownerAbove(zMenu* menu) {
    while (menu != nullptr && menu->parentMenu() != nullptr) {
      menu = menu->parentMenu();
    }
    return menu == nullptr ? nullptr : menu->owner();
  }
  bool isClosed() const { return stations.empty() || stations.back().alive.expired(); }
  zWindow* owner() const { return ownerAlive ? ownerWindow : nullptr; }

  zWindow* ownerWindow;
  ziAlive ownerAlive;
  std::vector<Station> stations;
};

std::shared_ptr<ziMenuItem> held(XtPointer client) {
  return static_cast<ziMenuItem*>(client)->shared_from_this();
}

// The toolkit toggles by itself; only the application decides about check marks.
void putToggleBack(const ziMenuItem& item) {
  if (item.widget != nullptr && XmIsToggleButtonGadget(item.widget)) {
    XmToggleButtonGadgetSetState(
        item.widget, XmToggleButtonGadgetGetState(item.widget) != False ? False : True, False);
  }
}

}  // namespace

void zMenuCommandProc(Widget /*gadget*/, XtPointer client, XtPointer data) {
  const std::shared_ptr<ziMenuItem> item = held(client);
  const auto& cause = *static_cast<XmAnyCallbackStruct*>(data);
  const MenuRoad road(item->menu);
  zEvent chosen = road.event(kMsgMenuSelect, item->id, cause);
  chosen.extra = item->selectFlags() | kSelectChosen;
  road.offer(chosen);
  zEvent closed = MenuRoad::closedEvent(cause.event);
  road.offer(closed);
  putToggleBack(*item);
  zEvent command = road.event(kMsgCommand, item->id, cause);
  command.extra = kCommandFromMenu;
  road.offer(command);
}

void zMenuArmProc(Widget /*gadget*/, XtPointer client, XtPointer data) {
  const std::shared_ptr<ziMenuItem> item = held(client);
  const MenuRoad road(item->menu);
  zEvent armed = road.event(kMsgMenuSelect, item->id, *static_cast<XmAnyCallbackStruct*>(data));
  armed.extra = item->selectFlags();
  road.offer(armed);
}

void zMenuMapProc(Widget pulldown, XtPointer client, XtPointer data) {
  const std::shared_ptr<ziMenuItem> item = held(client);
  const auto& cause = *static_cast<XmAnyCallbackStruct*>(data);
  item->posted = cause.reason == XmCR_MAP ? std::make_unique<zApp::PostedMenu>() : nullptr;
  zMenu* menu = item->subItems->menu;
  if (menu == nullptr) {
    return;
  }
  const MenuRoad road(menu);
  if (cause.reason == XmCR_UNMAP) {
    if (auto* popup = windowCast<zPopupMenu>(menu); popup != nullptr) {
      popup->unmapped(pulldown);
    }
    zEvent closed = MenuRoad::closedEvent(cause.event);
    road.offerToMenus(closed);
  } else {
    zEvent shown = road.event(kMsgMenuInit, 0, cause);
    road.offerToMenus(shown);
  }
}

void tellMenuClosed(zMenu& menu) {
  zEvent closed = MenuRoad::closedEvent(nullptr);
  MenuRoad(&menu).offerToMenus(closed);
}
