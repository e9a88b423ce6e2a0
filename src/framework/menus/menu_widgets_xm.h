#pragma once

#include "framework/menus/menu_item.h"

#include <Xm/XmAll.h>

class zMenu;

/// The widgets of menus. Items are the client data of their gadgets' callbacks; every operation
/// here that ends a widget takes the callbacks away first, so that an item may die at once while
/// its widget waits for the end of the running event.

/// A menu bar for `list`, not managed, under a main window.
Widget makeMenuBar(Widget over, ziMenuItemDList& list);

/// Makes the root of a popup under `owner` and the gadgets of all lines of `root`.
Widget buildPopupRoot(ziMenuItem& root, Widget owner);

/// Makes the gadget of `list`'s item at `index`, and all below it, in `container`: a bar, a
/// pulldown or a popup's root.
void buildMenuItem(ziMenuItemDList& list, int index, Widget container);

/// Ends the widgets of one item and all below it, closing what is open. No handler hears of it.
void destroyMenuItem(ziMenuItem& item);

/// Takes the callbacks of all widgets of the list and forgets them; they die with their root.
void forgetMenuWidgets(ziMenuItemDList& list);

/// Takes a bar or a popup's root off the screen and destroys it, with the widgets of `list`, its
/// items. No handler hears of it.
void destroyMenuRoot(Widget root, ziMenuItemDList& list);

/// Bring the state or text of an item to its gadget; the first two do nothing without one.
void showMenuItemSensitivity(const ziMenuItem& item);
void showMenuItemCheck(const ziMenuItem& item, bool checked);
void showMenuItemText(ziMenuItem& item);

/// The callbacks of menu gadgets and pulldowns. Client data is the ziMenuItem.

/// An item was chosen.
void zMenuCommandProc(Widget gadget, XtPointer item, XtPointer data);
/// An item was armed: the pointer or the keyboard stands on it.
void zMenuArmProc(Widget gadget, XtPointer item, XtPointer data);
/// The pulldown of a sub menu, or a popup's root, is about to be shown, or went.
void zMenuMapProc(Widget pulldown, XtPointer item, XtPointer data);

/// Tells the handlers of a menu that one below it has closed. The menu may be gone afterwards.
void tellMenuClosed(zMenu& menu);
