#pragma once

#include "framework/menus/menu.h"
#include "support/geometry.h"

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

  const zPoint& position() const { return place; }
  /// The active popup, or null.
  static zPopupMenu* active();

 protected:
  ziMenuItemDList& lines() const override { return *root().subItems; }

 private:
  friend void popupUnmapped(zMenu& menu, Widget pulldown);

  enum PopupState { kIdle = 0, kFinished = 1, kPosted = 2 };

  ziMenuItem& root() const { return *topItems().at(0); }
  void post(int button);
  void takeKeyboard();

  zPoint place;
  PopupState popupState = kIdle;
};

/// Tells a menu that one of its pulldowns went: ends the loop of a popup whose root it is.
void popupUnmapped(zMenu& menu, Widget pulldown);
