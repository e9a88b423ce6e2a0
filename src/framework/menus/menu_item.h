#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/core/application.h"
#include "framework/draw/xtfwd.h"
#include "support/rwc_string.h"

class zMenu;
class ziMenuItemDList;

/// What a menu item is, as its maker says it (the Win32 numbers).
enum MenuItemFlag : unsigned {
  kItemGreyed = 0x0001,
  kItemDisabled = 0x0002,
  kItemBitmap = 0x0004,     ///< the label is a picture
  kItemChecked = 0x0008,    ///<
  kItemSubMenu = 0x0010,    ///< only as an answer: sub menus are attached by addSubMenu
  kItemSeparator = 0x0800,  ///<
  kItemHelp = 0x4000,       ///< stands at the right end of a menu bar
};

/// How a menu item is at present. The low nibble holds the one, the high nibble the other.
enum MenuItemState : unsigned {
  kItemStateGreyed = 0x01,
  kItemStateChecked = 0x10,
  kItemStateGreyedMask = 0x0F,
  kItemStateCheckedMask = 0xF0,
};

/// Values of `extra` in kMsgMenuSelect beside kItemBitmap and kItemSubMenu.
enum MenuSelectFlag : int {
  kSelectGreyed = kItemGreyed | kItemDisabled,
  kSelectChosen = 0x8000,  ///< the item was chosen, not merely armed
};

/// `lparam` of the kMsgMenuSelect that says that a menu has closed; otherwise it is the owner.
inline constexpr std::intptr_t kMenuClosed = 0xFFFF;
/// Id of separators and sub menus. No search finds it.
inline constexpr int kNoItemId = -1;

/// The text of an item cut at its first tab.
struct ziMenuLabel {
  std::string label;
  std::string accelerator;  ///< shown at the right; it binds no key
};
ziMenuLabel splitMenuText(std::string_view text);

/// The state that a new item with these flags has.
unsigned menuItemState(unsigned flags);
/// `state` after the item was greyed or not.
unsigned greyedMenuItemState(unsigned state, bool greyed);
/// `state` of an item without a widget after it was checked or not.
unsigned checkedMenuItemState(unsigned state, bool checked);

/// One line of a menu. Lists own items; what runs for one holds it by shared_from_this and sees by
/// a null `widget` that it was removed meanwhile.
struct ziMenuItem : std::enable_shared_from_this<ziMenuItem> {
  /// A null `label` is the empty text. A separator with id 0 gets kNoItemId.
  ziMenuItem(int itemId, const char* label, unsigned itemFlags);

  bool isSeparator() const { return (flags & kItemSeparator) != 0; }
  bool isSubMenu() const { return subItems != nullptr; }
  bool isOpen() const { return posted != nullptr; }
  bool isGreyed() const { return (state & kItemStateGreyedMask) != 0; }
  bool isChecked() const { return (state & kItemStateCheckedMask) != 0; }
  /// Takes the mnemonic out of the text, once; a later call finds nothing to do.
  void parseText();
  void setText(const RWCString& newText);
  /// `extra` of the kMsgMenuSelect that tells of this item.
  int selectFlags() const;

  Widget widget = nullptr;                   ///< gadget; null while the menu is not built
  Widget subMenuWidget = nullptr;            ///< pulldown of a sub menu
  std::unique_ptr<zApp::PostedMenu> posted;  ///< while the pulldown is on the screen
  int id;
  char mnemonic = 0;  ///< 0 for none, and until the text was parsed
  RWCString text;
  Pixmap bitmap = 0;  ///< label of a bitmap item; not owned
  unsigned flags;
  unsigned state;
  std::shared_ptr<ziMenuItemDList> subItems;  ///< null for all but sub menus
  zMenu* menu = nullptr;                      ///< the first to hear of this item

 private:
  bool isParsed = false;
};

/// The lines of one menu, in order. The list of a sub menu belongs to the menu object and to its
/// entry in the parent together.
class ziMenuItemDList {
 public:
  /// Where an item stands; no list when it stands nowhere.
  struct Place {
    ziMenuItemDList* list = nullptr;
    int index = 0;
    explicit operator bool() const { return list != nullptr; }
    ziMenuItem& item() const { return *list->at(index); }
  };

  explicit ziMenuItemDList(zMenu* belongsTo) : menu(belongsTo) {}

  int size() const { return static_cast<int>(items.size()); }
  /// Null outside the list.
  ziMenuItem* at(int index) const;
  /// Puts `item` before `position` (at the end when that is outside the list) and makes it this
  /// menu's. Returns its place.
  int insert(int position, std::shared_ptr<ziMenuItem> item);
  /// Takes an item out; false when it is not there.
  bool remove(const ziMenuItem& item);
  /// The first item with this id here or in sub menus.
  Place find(int id);

  auto begin() const { return items.begin(); }
  auto end() const { return items.end(); }

  zMenu* menu;  ///< who hears of these items; null once there is nobody

 private:
  std::vector<std::shared_ptr<ziMenuItem>> items;
};
