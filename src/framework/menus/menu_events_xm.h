#pragma once

class zMenu;

#include <X11/Intrinsic.h>

/// The callbacks of menu gadgets and pulldowns. Client data is the ziMenuItem.

/// An item was chosen.
void zMenuCommandProc(Widget gadget, XtPointer item, XtPointer data);
/// An item was armed: the pointer or the keyboard stands on it.
void zMenuArmProc(Widget gadget, XtPointer item, XtPointer data);
/// The pulldown of a sub menu, or a popup's root, is about to be shown, or went.
void zMenuMapProc(Widget pulldown, XtPointer item, XtPointer data);

/// Tells the handlers of a menu that one below it has closed. The menu may be gone afterwards.
void tellMenuClosed(zMenu& menu);
