#pragma once

#include <functional>
#include <string>
#include <vector>

#include "framework/draw/xtfwd.h"

/// Looks at the widgets of menus, for tests that keep the toolkit's headers out.

struct MenuItemView {
  std::string label;
  std::string accelerator;
  char mnemonic = 0;
  bool isChecked = false;
  bool isSensitive = true;
};

/// What an item's gadget shows.
MenuItemView menuItemView(Widget gadget);

/// The managed gadgets of a bar, a pulldown or a popup's root, in the order of the screen.
std::vector<Widget> menuGadgets(Widget container);

/// Their labels, separators as "-".
std::vector<std::string> menuLabels(Widget container);

/// The pulldown of a cascade gadget; null when it has none.
Widget pulldownOf(Widget cascade);

/// The widget that a gadget stands in.
Widget containerOf(Widget gadget);

/// The gadget that the bar puts at its end; null when it has none.
Widget helpGadget(Widget bar);

/// How many popup children a widget has.
int popupCount(Widget widget);

/// Destroys a widget behind its menu's back.
void destroyWidget(Widget widget);

/// How often menus take account of their managed items during `action`.
int menuLayoutsDuring(const std::function<void()>& action);
