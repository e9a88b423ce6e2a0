// Menus as their users see them. The lists of items are the truth; widgets follow them as far as
// they are built (menu_widgets.cpp).
//
// Invariants: an item's widget is null unless it is usable; a sub menu's list is shared by its
// object and its entry; `menu` of a list and of an item is always an object that lives, or null.

#include "framework/menus/menu.h"

#include <cstdio>
#include <utility>

#include "framework/core/window.h"
#include "framework/menus/menu_widgets_xm.h"

namespace {

// The pulldown of the entry in `tree` that `list` belongs to; null while it is not built.
Widget pulldownOf(const ziMenuItemDList& list, const ziMenuItemDList& tree) {
  for (const std::shared_ptr<ziMenuItem>& item : tree) {
    if (item->subItems.get() == &list) {
      return item->subMenuWidget;
    }
    Widget below = item->isSubMenu() ? pulldownOf(list, *item->subItems) : nullptr;
    if (below != nullptr) {
      return below;
    }
  }
  return nullptr;
}

}  // namespace

zMenu::zMenu() : zMenu(nullptr, kMenu) {}

zMenu::zMenu(zWindow* owner) : zMenu(owner, kMenu) {
  Widget over = owner->innerWidget() != nullptr ? owner->innerWidget() : owner->widget();
  setRoot(makeMenuBar(over, topItems()));
}

zMenu::zMenu(zWindow* owner, MenuKind kind)
    : ziFrameMenu(owner, kMenuOwnerMask),
      menuKind(kind),
      items(std::make_shared<ziMenuItemDList>(this)) {
  markClass(kClassMenu);
}

zMenu::~zMenu() {
  destroyRoot();
  handOver(*items, parent);
}

// The items outlive this object when their entry in the parent does: they are the parent's then.
void zMenu::handOver(ziMenuItemDList& list, zMenu* heir) {
  list.menu = heir;
  for (const std::shared_ptr<ziMenuItem>& item : list) {
    item->menu = heir;
    if (!item->isSubMenu()) {
      continue;
    }
    zMenu* below = item->subItems->menu;
    if (below == this) {
      handOver(*item->subItems, heir);
    } else if (below != nullptr) {
      below->parent = heir;
    }
  }
}

void zMenu::setRoot(Widget root) {
  rootWidget = root;
  XtAddCallback(root, const_cast<char*>(XmNdestroyCallback), rootDestroyed, this);
}

void zMenu::destroyRoot() {
  if (rootWidget == nullptr) {
    return;
  }
  Widget root = std::exchange(rootWidget, nullptr);
  XtRemoveCallback(root, const_cast<char*>(XmNdestroyCallback), rootDestroyed, this);
  destroyMenuRoot(root, topItems());
}

void zMenu::rootDestroyed(Widget /*root*/, void* client, void* /*data*/) {
  auto* menu = static_cast<zMenu*>(client);
  menu->rootWidget = nullptr;
  forgetMenuWidgets(menu->topItems());
}

int zMenu::appendItem(int id, const char* text, int flags, Pixmap picture) {
  if ((flags & kItemSubMenu) != 0) {
    std::fputs("Error: Using zMenu::appendItem to attach a menu is unsupported\n", stderr);
    return 0;
  }
  return insertItem(id, lines().size(), text, flags, picture);
}

int zMenu::insertItem(int id, int position, const char* text, int flags, Pixmap picture) {
  if ((flags & kItemSubMenu) != 0) {
    std::fputs("Error: Using zMenu::insertItem to attach a menu is unsupported\n", stderr);
    return 0;
  }
  auto item = std::make_shared<ziMenuItem>(id, text, static_cast<unsigned>(flags));
  item->bitmap = picture;
  return addLine(position, std::move(item));
}

int zMenu::appendSeparator() {
  return appendItem(0, "", kItemSeparator);
}

int zMenu::addSubMenu(zMenu* sub, const char* text, int position) {
  if (sub == nullptr || sub == this || sub->parent != nullptr || sub->rootWidget != nullptr ||
      sub->menuKind != kMenu) {
    return 0;
  }
  for (const zMenu* above = this; above != nullptr; above = above->parent) {
    if (above == sub) {
      return 0;
    }
  }
  auto item = std::make_shared<ziMenuItem>(kNoItemId, text, 0U);
  item->subItems = sub->items;
  sub->parent = this;
  addLine(position, std::move(item));
  return 1;
}

int zMenu::deleteSubMenuAt(int position) {
  if (lines().at(position) == nullptr) {
    return 0;
  }
  const std::shared_ptr<ziMenuItem> item = lines().at(position)->shared_from_this();
  const bool wasOpen = item->isOpen();
  lines().remove(*item);
  detach(*item);
  if (wasOpen) {
    // Last, since a handler may destroy this menu.
    tellMenuClosed(*this);
  }
  return 1;
}

// Ends an item that was taken out of its list.
void zMenu::detach(ziMenuItem& item) {
  destroyMenuItem(item);
  item.menu = nullptr;
  if (!item.isSubMenu()) {
    return;
  }
  zMenu* below = item.subItems->menu;
  if (below == this) {
    // Lines that a resource or a destroyed menu object left to this menu go with the entry.
    handOver(*item.subItems, nullptr);
  } else if (below != nullptr) {
    below->parent = nullptr;
  }
}

int zMenu::create() {
  if (rootWidget == nullptr || menuKind != kMenu) {
    return 0;
  }
  for (int index = 0; index < items->size(); ++index) {
    if (items->at(index)->widget == nullptr) {
      buildMenuItem(*items, index, rootWidget);
    }
  }
  XtManageChild(rootWidget);
  return 1;
}

int zMenu::addLine(int position, std::shared_ptr<ziMenuItem> item) {
  const int index = lines().insert(position, std::move(item));
  Widget built = container();
  if (built == nullptr) {
    return 0;
  }
  buildMenuItem(lines(), index, built);
  return 1;
}

// The widget that this menu's gadgets stand in; null while that is not built.
Widget zMenu::container() const {
  if (parent != nullptr) {
    return pulldownOf(*items, parent->topItems());
  }
  if (menuKind == kPopup) {
    return rootWidget;
  }
  return rootWidget != nullptr && XtIsManaged(rootWidget) ? rootWidget : nullptr;
}

ziMenuItem* zMenu::find(int id) const {
  const ziMenuItemDList::Place place = items->find(id);
  return place ? &place.item() : nullptr;
}

int zMenu::setGrayed(int id, int grayed) {
  ziMenuItem* item = find(id);
  if (item == nullptr) {
    return 0;
  }
  item->state = greyedMenuItemState(item->state, grayed != 0);
  showMenuItemSensitivity(*item);
  return 1;
}

int zMenu::checkItem(int id, int check) {
  ziMenuItem* item = find(id);
  if (item == nullptr) {
    return 0;
  }
  if (item->widget != nullptr) {
    // Intended: once built, the widget alone knows.
    showMenuItemCheck(*item, check != 0);
  } else {
    item->state = checkedMenuItemState(item->state, check != 0);
  }
  return 1;
}

int zMenu::isItemEnabled(int id) const {
  const ziMenuItem* item = find(id);
  return item == nullptr || item->widget == nullptr || XtIsSensitive(item->widget) ? 1 : 0;
}

Widget zMenu::itemWidget(int id) const {
  const ziMenuItem* item = find(id);
  return item == nullptr ? nullptr : item->widget;
}

void zMenu::setCommand(zEvH* target, zHandler member, int id) {
  addHandler(target, member, kMsgCommand, static_cast<unsigned>(id), static_cast<unsigned>(id));
}

void zMenu::removeCommand(zEvH* target, zHandler member, int id) {
  removeHandler(target, member, kMsgCommand, static_cast<unsigned>(id));
}

void zMenu::addMenuInitHandler(zEvH* target, zHandler member) {
  addHandler(target, member, kMsgMenuInit);
}
