// Menu items as data: texts, flags and states, and the lists that hold them.

#include "framework/menus/menu_item.h"

#include <utility>

#include "support/text.h"

ziMenuLabel splitMenuText(std::string_view text) {
  const std::size_t tab = text.find('\t');
  if (tab == std::string_view::npos) {
    return {std::string(text), {}};
  }
  return {std::string(text.substr(0, tab)), std::string(text.substr(tab + 1))};
}

unsigned menuItemState(unsigned flags) {
  unsigned state = 0;
  state |= (flags & kItemChecked) != 0 ? kItemStateChecked : 0U;
  state |= (flags & (kItemGreyed | kItemDisabled)) != 0 ? kItemStateGreyed : 0U;
  // Intended: an item with a picture starts greyed, and not checked whatever its flags say.
  return (flags & kItemBitmap) != 0 ? unsigned{kItemStateGreyed} : state;
}

unsigned greyedMenuItemState(unsigned state, bool greyed) {
  if (!greyed) {
    return state & ~unsigned{kItemStateGreyedMask};
  }
  if ((state & kItemStateGreyedMask) != 0) {
    return state;
  }
  return state == 0 ? unsigned{kItemStateGreyed} : kItemStateGreyed | kItemStateChecked;
}

unsigned checkedMenuItemState(unsigned state, bool checked) {
  // Intended: any state but 0 counts as greyed here, so that an item which is checked already comes
  // out greyed.
  const unsigned rest = state == 0 ? 0U : kItemStateGreyed;
  return checked ? rest | kItemStateChecked : rest;
}

ziMenuItem::ziMenuItem(int itemId, const char* label, unsigned itemFlags)
    : id(itemId), text(label), flags(itemFlags), state(menuItemState(itemFlags)) {
  if (isSeparator() && id == 0) {
    id = kNoItemId;
  }
}

void ziMenuItem::parseText() {
  if (isParsed) {
    return;
  }
  isParsed = true;
  const zLabelText label = takeMnemonic(text.view());
  mnemonic = label.mnemonic;
  text = RWCString(label.text);
}

void ziMenuItem::setText(const RWCString& newText) {
  text = newText;
  mnemonic = 0;
  isParsed = false;
}

int ziMenuItem::selectFlags() const {
  if (id == kNoItemId || isSubMenu()) {
    return kItemSubMenu;
  }
  unsigned answer = 0;
  answer |= (state & kItemStateGreyedMask) == kItemStateGreyed ? unsigned{kSelectGreyed} : 0U;
  answer |= (flags & kItemBitmap) != 0 ? unsigned{kItemBitmap} : 0U;
  // Intended: nothing here tells of a check mark.
  return static_cast<int>(answer);
}

ziMenuItem* ziMenuItemDList::at(int index) const {
  return index < 0 || index >= size() ? nullptr : items[static_cast<std::size_t>(index)].get();
}

int ziMenuItemDList::insert(int position, std::shared_ptr<ziMenuItem> item) {
  const int index = position < 0 || position > size() ? size() : position;
  item->menu = menu;
  items.insert(items.begin() + index, std::move(item));
  return index;
}

bool ziMenuItemDList::remove(const ziMenuItem& item) {
  return std::erase_if(items, [&](const auto& other) { return other.get() == &item; }) != 0;
}

ziMenuItemDList::Place ziMenuItemDList::find(int id) {
  if (id == kNoItemId) {
    return {};
  }
  for (int index = 0; index < size(); ++index) {
    const ziMenuItem& item = *at(index);
    if (!item.isSubMenu() && item.id == id) {
      return {this, index};
    }
    if (const Place below = item.isSubMenu() ? item.subItems->find(id) : Place{}) {
      return below;
    }
  }
  return {};
}
