#pragma once

#include <memory>
#include <span>
#include <vector>

#include "framework/core/notify.h"
#include "framework/menus/menu_item.h"
#include "support/geometry.h"

struct ziMenuLine;
struct zMenuRecord;

/// A menu: the bar of a frame, a pulldown of one, or (as zPopupMenu) a popup. Items are named by
/// their ids; the bar's operations reach into its sub menus.
///
/// Choosing an item sends kMsgMenuSelect for it, kMsgMenuSelect with kMenuClosed, and kMsgCommand,
/// each to the posted popup, to the menu of the item and those above it, and to the owner of the
/// bar (zDispatch), until one takes it. Arming an item sends kMsgMenuSelect, mapping a pulldown
/// kMsgMenuInit. Handlers may remove items and destroy menus.
///
/// A frame owns its bar. A sub menu is owned by whoever made it; its items are its own and its
/// parent's together, so that either may go first.
class zMenu : public ziFrameMenu {
 public:
  static constexpr int kClassNumber = kClassMenu;

  /// A sub menu, to be attached by addSubMenu.
  zMenu();
  /// A menu bar for `owner`, which must have its widgets. It shows after create().
  explicit zMenu(zWindow* owner);
  ~zMenu() override;

  /// Adds the lines of a menu resource (extra/). An empty span says that there is none with this
  /// id. Faults are reported on standard error; what was read before one stays.
  void load(int resourceId, std::span<const zMenuRecord> records);

  /// Adds an item at the end. `flags` are MenuItemFlag; with kItemBitmap the label is `picture`,
  /// which must outlive the menu. 1 if its widget was made at once, 0 if that is for later.
  int appendItem(int id, const char* text, int flags, Pixmap picture = 0);
  /// Inserts before `position`, counted from 0; at the end when there is no such position.
  int insertItem(int id, int position, const char* text, int flags, Pixmap picture = 0);
  int appendSeparator();
  /// Inserts `sub`, a sub menu that is attached nowhere, under `text`. 0 when it cannot be.
  int addSubMenu(zMenu* sub, const char* text, int position);
  /// Removes the entry at a position of this menu's own lines with all below it; 0 if there is
  /// none. Its menu object stays, with its items, and can be attached anew.
  int deleteSubMenuAt(int position);
  /// Makes the widgets of a bar that are not there yet and shows it; 0 for other menus.
  int create();

  // By id. 1 if the item exists, else 0.
  int setGrayed(int id, int grayed);
  int enableItem(int id, int enable) { return setGrayed(id, enable == 0 ? 1 : 0); }
  int checkItem(int id, int check);
  /// The text may have a mnemonic and an accelerator as that of a new item (extra/).
  int setItemText(int id, const RWCString& text);
  int removeItem(int id);  ///< extra/
  int isItemEnabled(int id) const override;

  // Handlers.
  void setCommand(zEvH* target, zHandler member, int id);
  void removeCommand(zEvH* target, zHandler member, int id);
  /// Tells before any pulldown of this menu shows.
  void addMenuInitHandler(zEvH* target, zHandler member);

  /// The menu bar or the posted popup; null when there is none.
  Widget widget() const { return rootWidget; }
  zMenu* parentMenu() const { return parent; }
  /// The gadget of an item; null while it is not built.
  Widget itemWidget(int id) const;

 protected:
  enum MenuKind { kMenu = 2, kPopup = 3 };
  zMenu(zWindow* owner, MenuKind kind);

  /// Where items are added: a popup's are one level down.
  virtual ziMenuItemDList& lines() const { return *items; }
  ziMenuItemDList& topItems() const { return *items; }
  /// Takes note of the root widget, and of its end if others destroy it.
  void setRoot(Widget root);
  void destroyRoot();

 private:
  Widget container() const;
  int addLine(int position, std::shared_ptr<ziMenuItem> item);
  void addLines(ziMenuItemDList& list, const std::vector<ziMenuLine>& described);
  ziMenuItem* find(int id) const;
  void detach(ziMenuItem& item);
  void handOver(ziMenuItemDList& list, zMenu* heir);
  static void rootDestroyed(Widget root, void* menu, void* data);

  MenuKind menuKind;
  std::shared_ptr<ziMenuItemDList> items;
  Widget rootWidget = nullptr;
  zMenu* parent = nullptr;
};

/// A menu that shows at a place of its own. Its widgets exist while it is shown.
///
/// From its first popup() until its destruction, or until another popup is shown, this menu is the
/// active popup, which hears every menu's events first. That is intended, also while it is not on
/// the screen.
class zPopupMenu : public zMenu {
 public:
  static constexpr int kClassNumber = kClassPopupMenu;

  /// `position` is in the owner's coordinates; popup() replaces it.
  zPopupMenu(const zPoint& position, zWindow* owner);
  ~zPopupMenu() override;

  /// Shows the menu at `newPosition` and runs the event loop until it has gone: by a selection, by
  /// Escape, by a click elsewhere, or because the application stops or the owner goes. `button` is
  /// the mouse button that selects beside the first. The commands have been handled on return, and
  /// this object may be gone. 0 when the owner is not on the screen.
  int popup(const zPoint& newPosition, int button);

  /// One of its pulldowns went: ends the loop if that was the root.
  void unmapped(Widget pulldown);

  const zPoint& position() const { return place; }
  /// The active popup, or null.
  static zPopupMenu* active();

 protected:
  ziMenuItemDList& lines() const override { return *root().subItems; }

 private:
  enum PopupState { kIdle = 0, kFinished = 1, kPosted = 2 };

  ziMenuItem& root() const { return *topItems().at(0); }
  void post(int button);
  void takeKeyboard();

  zPoint place;
  PopupState popupState = kIdle;
};
